#pragma once

#include "standalone/scenefile/SceneFileError.h"

#include <QFile>

namespace osg::scenefile
{

/// A file that comes into being at one stroke: it is written under another name in the folder of its target and takes
/// the target's name when it is complete. Destroyed before that, it leaves nothing.
class OutputFile
{
public:
    explicit OutputFile(const QString& target);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// The first failure, after which nothing is written any more.
    const std::optional<SceneFileError>& error() const { return m_error; }

    void write(const void* data, std::uint64_t size);
    /// Fills up with zeros to the next multiple of 64 bytes.
    void pad();
    /// Writes at the start of the file instead.
    void rewrite(const void* data, std::uint64_t size);
    std::uint64_t position() const { return m_position; }
    /// The file takes the name of its target, unless something failed.
    void commit();

private:
    bool create(const QString& folder);
    void fail(SceneFileErrorCode code, const QString& message);

    QString m_target;
    QFile m_file;
    std::uint64_t m_position = 0;
    std::optional<SceneFileError> m_error;
};

} // namespace osg::scenefile
