#pragma once

#include "cad/visualization/CADFileNodes.h"
#include "cad/visualization/CADNodeRecord.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace HB::Visualization
{

/// An assembly as a table of numbered records, with the scene nodes of the files that it refers to.
///
/// A record's id is its place in the table; record 0 is the root. Callers use ids. An id past the end of the table
/// throws std::runtime_error "No node with Id: " and the id, in every operation that takes one but `isValidId`.
///
/// The structure owns its records and holds a reference on the node of each file. The tree that a subclass builds
/// belongs to whoever takes it, and outlives the structure; while the structure is in use the tree must live.
class CADProductStructure
{
public:
    CADProductStructure() = default;
    CADProductStructure(const CADProductStructure&) = delete;
    CADProductStructure& operator=(const CADProductStructure&) = delete;
    virtual ~CADProductStructure();

    /// Builds the table and the tree; gives the tree's root, which has no parent and the count 0.
    virtual osg::NodePtr createScene() = 0;
    /// Reads the source; false if that fails.
    virtual bool loadDocument(const std::string& fileName) = 0;

    /// The id of the root.
    virtual std::uint32_t getRootId() const { return 0; }
    /// How many child records it has.
    virtual std::uint32_t getChildCount(std::uint32_t id) const;
    /// The id of a child record.
    /// @throws std::runtime_error "childNum is out of range"
    virtual std::uint32_t getChild(std::uint32_t id, std::uint32_t childNum) const;
    /// The name of the record's node, empty if it has none.
    virtual std::string getNodeName(std::uint32_t id) const;

    /// Asks for the load of a record and of all records below it (see CADNodeRecord::requestLoad).
    virtual void requestLoad(std::uint32_t id);
    /// Asks for the unload of a record and of all records below it (see CADNodeRecord::requestUnload).
    virtual void requestUnload(std::uint32_t id);
    /// For subclasses that act on requests; does nothing here.
    virtual void update() {}

    ///@{
    /// A flag of the caller's own, which a load takes away.
    virtual void setMarked(std::uint32_t id, bool marked);
    virtual bool isMarked(std::uint32_t id) const;
    ///@}
    ///@{
    /// Whether the content of a record shows (see CADNodeRecord::setActive).
    virtual void setActive(std::uint32_t id, bool active);
    virtual bool isActive(std::uint32_t id) const;
    ///@}
    ///@{
    /// Checks the id; the value is for subclasses that have auxiliary records.
    virtual void setAuxiliary(std::uint32_t id, bool auxiliary);
    virtual bool getAuxiliary(std::uint32_t id) const;
    ///@}
    /// See CADNodeRecord::getUserDataText.
    virtual std::string getUserDataText(std::uint32_t id) const;

    /// Whether the table has a record of this id.
    virtual bool isValidId(std::uint32_t id) const { return id < m_nodes.size(); }

    ///@{
    /// The placement of a record's node; see the operations of the same names of CADNodeRecord.
    virtual void setTranslation(std::uint32_t id, float x, float y, float z);
    virtual std::vector<float> getTranslation(std::uint32_t id) const;
    virtual void setRotation(std::uint32_t id, float x, float y, float z, float angle);
    virtual std::vector<float> getRotation(std::uint32_t id) const;
    virtual void setScale(std::uint32_t id, float x, float y, float z);
    virtual std::vector<float> getScale(std::uint32_t id) const;
    ///@}

    /// Brings the content of a record into the scene; null is ignored.
    virtual void realizeRecord(CADNodeRecord* record) = 0;

    /// @throws std::runtime_error see above
    void checkId(std::uint32_t id) const;

    /// Whether `createFileNode` reads the files that it makes nodes for.
    void setLoadFiles(bool loadFiles) { m_loadFiles = loadFiles; }

    /// How many records the table has.
    std::uint32_t getNodeCount() const { return static_cast<std::uint32_t>(m_nodes.size()); }
    /// The node that shows a record; null before there is one.
    osg::NodePtr getSceneNode(std::uint32_t id) const;
    /// Brings the content of the record of this id into the scene.
    void realizeNode(std::uint32_t id);

    /// The location of the file that a record waits for, as the document writes it; empty unless the record's state is
    /// `FilePending`.
    std::string getNodeLocation(std::uint32_t id) const;
    /// The same as a path: resolved against the document's folder and with its percent escapes decoded.
    std::string getNodeFileName(std::uint32_t id) const;

    /// `relative` in the document's folder. Two characters go from a text that begins with a dot or a separator,
    /// whatever the second one is: that cuts the "./" that documents write before their own folder, and climbs nowhere.
    /// @throws std::out_of_range `relative` is such a character alone
    std::string resolvePath(const std::string& relative) const;

    /// The node that was stored for a file, null if none was; each find counts as one user of the file.
    osg::NodePtr findFileNode(const std::string& path);
    /// Remembers `node`, and holds a reference on it; ignored when the file has a node already.
    void storeFileNode(const std::string& path, const osg::NodePtr& node);
    /// A node for the file at `location`, named after it: a fresh one that refers to the file, whose content is read
    /// and hung below it if files are wanted and it exists; a clone that shares the cores when the file has a node
    /// already. "CSB" files are read by whoever answers the host's message for them. Null for an empty location.
    /// @throws std::out_of_range see resolvePath
    osg::NodePtr createFileNode(const std::string& location, const std::string& format);

protected:
    /// Appends a record for `element`; gives its id.
    std::uint32_t addRecord(XML::CAD::CADBase* element);
    /// Empties the table.
    void clearRecords() { m_nodes.clear(); }
    /// The record of an id that is known to be in the table: nothing is checked.
    CADNodeRecord& record(std::uint32_t id) const { return *m_nodes[id]; }

    /// The document's path, from which locations are resolved; a UTF-8 text.
    std::string m_filePath;

private:
    friend struct ProductStructureTestAccess;

    CADNodeRecord& checkedRecord(std::uint32_t id) const;
    std::string fullPath(const std::string& path) const;
    std::string decodedPath(const std::string& location) const;
    bool fillFileNode(const osg::NodePtr& node, const std::string& path, bool isCsb) const;

    std::vector<std::unique_ptr<CADNodeRecord>> m_nodes;
    CADFileNodes m_fileNodes;
    bool m_loadFiles = true;
};

} // namespace HB::Visualization
