#pragma once

#include "files/FileBytes.h"
#include "files/ReadTask.h"
#include "host/OSGSystem/EncodedImage.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace files
{

/// What stands in a "data:" address.
struct DataAddress {
    std::string mimeType; ///< such as "image/png"; may be empty
    FileBytes bytes;
};

/// The content of an address "data:...;base64,...". Nothing when it is none, or when its digits are damaged.
std::optional<DataAddress> decodedAddress(std::string_view address, ReadTask& task, const QString& place);

/// The pictures that one file names, each taken once and none decoded. What cannot be taken is a warning that names it,
/// and no picture.
class ImageFiles
{
public:
    /// @param from the file that names the pictures, relative to which they stand
    ImageFiles(ReadTask& task, const QString& from) : m_task(task), m_from(from) {}

    /// The picture in the file at `path`, relative or absolute, with slashes of either kind. A path of another computer
    /// ("C:\pictures\oak.png") stands for its file name beside the file, if that exists.
    /// @param place where the file names it, for warnings
    osg::EncodedImagePtr at(const QString& path, const QString& place);
    /// The picture at the first of `paths`, of which there is one or more, that is there and may be taken. Where there
    /// is none, the warning names the first.
    osg::EncodedImagePtr firstAt(const std::vector<QString>& paths, const QString& place);
    /// The picture at `address`, percent-encoded as in glTF: a "data:" address or a relative path.
    osg::EncodedImagePtr atAddress(const std::string& address, const std::string& mimeType, const std::string& name,
                                   const QString& place);

private:
    QString placeOf(const QString& path) const;
    osg::EncodedImagePtr taken(const QString& path, const QString& place);

    ReadTask& m_task;
    QString m_from;
    std::map<QString, osg::EncodedImagePtr> m_images; ///< by path; null for what was warned of
};

} // namespace files
