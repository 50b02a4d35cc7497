#pragma once

#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlSource.h"

#include <map>
#include <memory>

namespace files::vrml
{

/// A file with the nodes at its top.
struct File {
    File(ReadTask& task, const QString& path) : source(task, path) {}
    Source source;
    Nodes nodes;
};

/// The files of one read, each read once.
class Files
{
public:
    explicit Files(ReadTask& task);

    /// Fails through the task.
    const File& open(const QString& path);
    /// The first file that an Inline node in `from` names and that is there; null, with a warning, for none, for a file
    /// that cannot be read and for one file more than there may be.
    const File* openInline(const Node& inlined, const File& from);

private:
    /// Where an Inline node leads.
    struct Target {
        QString path;                               ///< empty when no file is there
        std::optional<references::Refusal> refusal; ///< where one might be and nobody looks
    };

    Target targetOf(const Node& inlined, const File& from) const;

    ReadTask& m_task;
    NodeStore m_store;
    std::map<QString, std::unique_ptr<File>> m_files; ///< null for one that cannot be read
};

} // namespace files::vrml
