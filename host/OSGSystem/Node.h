#pragma once

#include "host/OSGSystem/NodeCore.h"

namespace osg
{

class ChildList;

/// A place in the tree: one core, one parent at most, and an ordered list of children.
///
/// A node holds a reference on its core and on each child. A child has one parent: adding it elsewhere moves it, and
/// the new reference is taken before the old one is given up.
class ZN_HOST_EXPORT Node : public AttachmentContainer
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = NodePtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: for the core, for the list of children, and for whether the node is active.
    static constexpr FieldMask CoreFieldMask = 1u << 1;
    static constexpr FieldMask ChildrenFieldMask = 1u << 2;
    static constexpr FieldMask ActiveFieldMask = 1u << 3;
    ///@}

    /// A node without core, parent and children; its reference count is 0.
    static NodePtr create();

    const FieldContainerType& getType() const override { return _type; }

    /// Null when it has none.
    NodeCorePtr getCore() const;
    /// Takes a reference on `core`, which may be null, and then gives up the one on the former core.
    void setCore(const NodeCorePtr& core);

    /// Null at the top of a tree. A parent is not held by its children.
    NodePtr getParent() const;

    /// How many children hang directly below it.
    unsigned getNChildren() const;
    /// Null when `index` is past the end.
    NodePtr getChild(unsigned index) const;
    /// Appends `child`, which leaves its former parent. Null, the node itself and its ancestors are ignored.
    void addChild(const NodePtr& child);
    /// As `addChild`, at `index`; an index past the end appends.
    void insertChild(unsigned index, const NodePtr& child);
    /// Takes `child` out; ignored when it is no child of this node.
    void subChild(const NodePtr& child);
    /// The position of `child`, -1 when it is no child of this node.
    int findChild(const NodePtr& child) const;

    /// An inactive node and what hangs below it is not shown. Nodes start active.
    void setActive(bool active);
    /// The flag of this node alone, whatever the nodes above it say.
    bool isActive() const { return m_active; }

protected:
    Node();
    ~Node() override;

    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    friend struct NodeAccess;

    bool canTake(const NodePtr& child) const;
    bool takeOut(const NodePtr& child);

    Node* m_parent = nullptr;
    NodeCore* m_core = nullptr;
    std::unique_ptr<ChildList> m_children;
    bool m_active = true;
};

} // namespace osg
