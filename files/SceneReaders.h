#pragma once

#include "files/SceneReader.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace files
{

class ReadTask;

/// Builds the tree of the file of `task` and gives back its root, a plain group with the count 0. Fails through `task`;
/// an exception of a library may leave it.
using ReadFunction = std::function<osg::NodePtr(ReadTask& task)>;

/// One format: a row of the table.
struct SceneFormat {
    QString name;           ///< for people
    QStringList extensions; ///< lower case, without the dot
    ReadFunction read;
};

/// A table of formats that can be read. It is a value, and knows no reader by itself: whoever makes one adds what it
/// is to read.
class SceneReaders
{
public:
    /// A later row wins where two have the same extension.
    void add(SceneFormat format);
    const std::vector<SceneFormat>& formats() const { return m_formats; }
    /// The format for an extension in any case of letters, null if there is none.
    const SceneFormat* find(const QString& extension) const;

    ReadResult read(const QString& path, const ReadOptions& options = {}) const;

private:
    std::vector<SceneFormat> m_formats;
};

} // namespace files
