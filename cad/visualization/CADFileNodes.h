#pragma once

#include "host/OSGSystem/Node.h"

#include <cstdint>
#include <map>
#include <string>

namespace HB::Visualization
{

/// The node of each file that a document refers to, by the file's full path. It holds a reference on each.
class CADFileNodes
{
public:
    /// The node that was stored for a file, null if none was; each find counts as one user of the file.
    osg::NodePtr find(const std::string& fullPath);
    /// Remembers `node`, whose file has one user then; ignored when the file has a node already.
    void store(const std::string& fullPath, const osg::NodePtr& node);
    /// Gives all nodes up; the users stay.
    void clear() { m_nodes.clear(); }

    /// How many places use each file.
    const std::map<std::string, std::uint32_t>& users() const { return m_users; }

private:
    std::map<std::string, osg::RefPtr<osg::NodePtr>> m_nodes;
    std::map<std::string, std::uint32_t> m_users;
};

/// A fresh node that refers to the file at `path`, and is named after it. The extension of `location`, as the document
/// writes it, decides whether the host reads the file by itself.
osg::NodePtr makeFileNode(const std::string& location, const std::string& path);

/// Hangs the content of a CSB file below `node`, as whoever answers the host's message for such files gives it.
/// @return false without an answer
bool addCsbContent(const osg::NodePtr& node, const std::string& path);

/// Has the host read the file that `node` refers to below it.
void addFileContent(const osg::NodePtr& node);

} // namespace HB::Visualization
