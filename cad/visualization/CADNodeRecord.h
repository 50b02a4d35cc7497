#pragma once

#include "cad/visualization/CADLoadState.h"
#include "host/OSGSystem/Node.h"

#include <cstdint>
#include <string>
#include <vector>

namespace HB::XML::CAD
{
class CADBase;
}

namespace HB::Visualization
{

/// One thing of an assembly that can be shown, switched or moved on its own: the root, a part, a carrier of geometry.
///
/// The element belongs to the document, the scene nodes to the tree; the record holds a reference on nothing but its
/// private copy of a material group. It is of use as long as document and tree live.
class CADNodeRecord
{
public:
    /// A record that is idle, active and without a node. `element` may be null.
    explicit CADNodeRecord(XML::CAD::CADBase* element) : m_element(element) {}
    CADNodeRecord(const CADNodeRecord&) = delete;
    CADNodeRecord& operator=(const CADNodeRecord&) = delete;

    ///@{
    /// What the document says of it; null for none. Not owned.
    XML::CAD::CADBase* getElement() const { return m_element; }
    void setElement(XML::CAD::CADBase* element) { m_element = element; }
    ///@}

    /// The node of the tree that shows it; null before there is one.
    const osg::NodePtr& getNode() const { return m_node; }
    /// Also notes the parent that `node` has now. Null takes both away.
    void setNode(const osg::NodePtr& node);
    /// The parent of the node at the time of the last `setNode`.
    const osg::NodePtr& getParentNode() const { return m_parentNode; }

    /// Appends the id of a child record.
    void addChild(std::uint32_t id) { m_children.push_back(id); }
    /// How many child records it has.
    std::uint32_t getChildCount() const { return static_cast<std::uint32_t>(m_children.size()); }
    /// The id of a child record.
    /// @throws std::runtime_error "childNum is out of range"
    std::uint32_t getChild(std::uint32_t childNum) const;

    ///@{
    /// How far the content is.
    CADLoadState getState() const { return m_state; }
    void setState(CADLoadState state) { m_state = state; }
    ///@}
    /// Asks for the load, or takes back the wish to unload. A record that is realised already, or asked, stays.
    void requestLoad();
    /// Asks for the unload, or takes back the wish to load. A record that is not realised, or asked, stays.
    void requestUnload();

    ///@{
    /// The private copy of the material group that applies to the record's file; null without one.
    const osg::NodePtr& getMaterialNode() const { return m_materialNode; }
    void setMaterialNode(const osg::NodePtr& node) { m_materialNode = node; }
    ///@}

    /// The location of the file as the document writes it, noted when the record is realised.
    void setFileName(const std::string& fileName) { m_fileName = fileName; }

    ///@{
    /// The caller's own mark; false at first.
    bool isMarked() const { return m_marked; }
    void setMarked(bool marked) { m_marked = marked; }
    ///@}

    /// Whether the content is wanted; true at first.
    bool isActive() const { return m_active; }
    /// Switches the loaded content, not the record's node; without content only the wish is noted.
    void setActive(bool active);
    /// Makes the record active, whatever was wished before, and takes the caller's mark away.
    void markLoaded();

    /// False: the structures of this library make no auxiliary records.
    bool isAuxiliary() const { return m_auxiliary; }

    ///@{
    /// The placement of the node, when its core is an `osg::ComponentTransform`; otherwise setters do nothing and
    /// getters give an empty vector. Lengths are millimetres, angles radians.
    void setTranslation(float x, float y, float z);
    std::vector<float> getTranslation() const;
    ///@}
    /// An axis of no length stands for no rotation.
    void setRotation(float x, float y, float z, float angle);
    /// The unit axis and the angle; (0, 0, 1, 0) for no rotation.
    std::vector<float> getRotation() const;
    ///@{
    /// Factors along the axes.
    void setScale(float x, float y, float z);
    std::vector<float> getScale() const;
    ///@}

    /// The user data of the element in an XML form of its own; empty without user data. Titles and values are written
    /// as they stand, without escapes, so that a quote in one of them makes the text ill-formed.
    std::string getUserDataText() const;

private:
    friend struct NodeRecordTestAccess;

    void switchContent(bool active);

    XML::CAD::CADBase* m_element;
    osg::NodePtr m_node;
    osg::NodePtr m_parentNode;
    osg::RefPtr<osg::NodePtr> m_materialNode;
    std::vector<std::uint32_t> m_children;
    CADLoadState m_state = CADLoadState::Idle;
    bool m_marked = false;
    bool m_active = true;
    bool m_auxiliary = false;
    std::int32_t m_kind = 1;
    std::string m_fileName;
};

} // namespace HB::Visualization
