#pragma once

#include "host/OSGSystem/Node.h"
#include "import/ImportExport.h"
#include "loader/UnloadedParts.h"

#include <map>
#include <string>

namespace HB::Visualization
{
class PLMXMLProductStructure;
}

/// Turns a PLMXML document into one tree: a reference to the document in state 2, and the product structure below it.
///
/// Part files stay unread unless they are asked for: each becomes a reference node below its place, and the table of
/// unread parts lists these nodes by the full path of their file. A file that stands at several places has one node and
/// clones of it. The tree outlives the loader, and nobody holds a reference on its root.
///
/// Meant for one `load` in its life: a second one keeps the entries of the first.
class ZN_IMPORT_EXPORT znPLMXMLLoader
{
public:
    /// `fileName` is a UTF-8 path.
    explicit znPLMXMLLoader(const std::string& fileName);
    /// A second loader of the same file, with the same tables and the same tree, which is not copied.
    znPLMXMLLoader(const znPLMXMLLoader& other);
    /// `other` keeps its switch and its node; its texts and tables are empty.
    znPLMXMLLoader(znPLMXMLLoader&& other) noexcept;
    ///@{
    /// As the constructors; the former tree stays as it is.
    znPLMXMLLoader& operator=(const znPLMXMLLoader& other);
    znPLMXMLLoader& operator=(znPLMXMLLoader&& other) noexcept;
    ///@}
    ~znPLMXMLLoader();

    /// Reads the document and builds the tree on the calling thread.
    /// @return false when the file name is empty or the document cannot be read (the host's log names it) or gives no
    ///         tree; the node stays as it was then, unless there is no tree
    /// @throws std::out_of_range for a part location that is a single dot or separator
    bool load();

    /// Null before a successful `load`.
    osg::NodePtr getNode() const;

    /// What setLoadReferencedFiles() was told last.
    bool loadReferencedFiles() const;
    /// Whether part files are read while the tree is built; false at first. Takes effect at the next `load`.
    void setLoadReferencedFiles(bool load);

    /// A copy. The nodes of a part are in the order of their creation; the first is the one that the others are clones
    /// of.
    UnloadedParts getUnloadedParts() const;

private:
    friend struct PLMXMLLoaderTestAccess;

    void addReferences(HB::Visualization::PLMXMLProductStructure& structure);
    void addReference(const osg::NodePtr& parent, const std::string& fullPath, const std::string& location);
    void convertToTransform3D(const osg::NodePtr& node);
    void createReference(osg::NodePtr& node, const std::string& fileName);

    std::string m_fileName;
    bool m_loadReferencedFiles = false;
    osg::NodePtr m_node;
    std::map<std::string, osg::NodePtr> m_referenceNodes;
    UnloadedParts m_unloadedParts;
};
