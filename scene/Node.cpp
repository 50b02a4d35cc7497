#include "host/OSGSystem/Node.h"

#include "scene/Attachments.h"
#include "scene/ChildList.h"
#include "scene/ContainerRegistry.h"
#include "scene/NodeAccess.h"

#include <algorithm>
#include <utility>

namespace osg
{

FieldContainerType Node::_type("Node", &AttachmentContainer::_type, "Node");
FieldContainerType NodeCore::_type("NodeCore", &AttachmentContainer::_type, "NodeCore");

Node::Node() = default;

Node::~Node()
{
    if (isSweeping())
        return;
    for (std::uint32_t i = getNChildren(); i-- > 0;) {
        Node* child = m_children->at(i);
        child->m_parent = nullptr;
        NodePtr(child).subRef();
    }
    NodeCorePtr(m_core).subRef();
}

NodePtr Node::create()
{
    return NodePtr(new Node);
}

NodeCorePtr Node::getCore() const
{
    return NodeCorePtr(m_core);
}

void Node::setCore(const NodeCorePtr& core)
{
    core.addRef();
    NodeCorePtr(std::exchange(m_core, core.get())).subRef();
    fieldChanged(CoreFieldMask);
}

NodePtr Node::getParent() const
{
    return NodePtr(m_parent);
}

unsigned Node::getNChildren() const
{
    return m_children ? m_children->size() : 0;
}

NodePtr Node::getChild(unsigned index) const
{
    return NodePtr(index < getNChildren() ? m_children->at(index) : nullptr);
}

/// A node without children can be no ancestor, so that growing a deep tree downwards costs nothing here.
bool Node::canTake(const NodePtr& child) const
{
    if (!child || child.get() == this)
        return false;
    if (child->getNChildren() != 0)
        for (const Node* step = m_parent; step; step = step->m_parent)
            if (step == child.get())
                return false;
    return true;
}

void Node::addChild(const NodePtr& child)
{
    insertChild(~0u, child);
}

void Node::insertChild(unsigned index, const NodePtr& child)
{
    if (!canTake(child))
        return;
    child.addRef();
    if (child->m_parent)
        child->m_parent->takeOut(child);
    if (!m_children)
        m_children = std::make_unique<ChildList>();
    m_children->insert(std::min(index, m_children->size()), child.get());
    child->m_parent = this;
    fieldChanged(ChildrenFieldMask);
}

void Node::subChild(const NodePtr& child)
{
    if (takeOut(child))
        fieldChanged(ChildrenFieldMask);
}

/// A move calls this for the former parent, which is no edit of the caller's.
bool Node::takeOut(const NodePtr& child)
{
    const int index = findChild(child);
    if (index < 0)
        return false;
    m_children->remove(static_cast<std::uint32_t>(index));
    if (m_children->size() == 0)
        m_children.reset();
    child->m_parent = nullptr;
    child.subRef();
    return true;
}

int Node::findChild(const NodePtr& child) const
{
    if (!child || !m_children || child->m_parent != this)
        return -1;
    return static_cast<int>(m_children->find(child.get()));
}

void Node::setActive(bool active)
{
    m_active = active;
    fieldChanged(ActiveFieldMask);
}

bool Node::equalFields(const FieldContainer& other) const
{
    const auto& node = static_cast<const Node&>(other);
    if (m_core != node.m_core || m_parent != node.m_parent || m_active != node.m_active)
        return false;
    return getNChildren() == 0 && node.getNChildren() == 0 && equalAttachments(node);
}

FieldContainerPtr Node::copy() const
{
    return NodeAccess::copyWithoutChildren(*this, true);
}

NodePtr NodeAccess::copyWithoutChildren(const Node& node, bool copyAttachments)
{
    Node* result = new Node;
    NodeCorePtr(node.m_core).addRef();
    result->m_core = node.m_core;
    result->m_active = node.m_active;
    if (copyAttachments)
        AttachmentAccess::copyAll(node, *result);
    return NodePtr(result);
}

void NodeAccess::cloneChildren(const Node& original, Node& clone, bool copyAttachments, std::vector<ClonePair>& pending)
{
    const ChildList& children = *original.m_children;
    clone.m_children = std::make_unique<ChildList>();
    clone.m_children->reserve(children.size());
    for (std::uint32_t i = 0; i < children.size(); ++i) {
        const Node& child = *children.at(i);
        Node& copied = *copyWithoutChildren(child, copyAttachments);
        NodePtr(&copied).addRef();
        clone.m_children->insert(i, &copied);
        copied.m_parent = &clone;
        if (child.m_children)
            pending.push_back({&child, &copied});
    }
}

/// The references on the children go over to the parent.
void NodeAccess::replaceByChildren(const NodePtr& node)
{
    Node& parent = *node->m_parent;
    ChildList& places = *parent.m_children;
    places.growBy(node->getNChildren() - 1);
    const std::unique_ptr<ChildList> children = std::move(node->m_children);
    auto index = static_cast<std::uint32_t>(places.find(node.get()));
    places.remove(index);
    for (std::uint32_t i = 0; i < children->size(); ++i) {
        children->at(i)->m_parent = &parent;
        places.insert(index++, children->at(i));
    }
    node->m_parent = nullptr;
    parent.fieldChanged(Node::ChildrenFieldMask);
    node.subRef();
}

} // namespace osg
