// Nodes and walks over them.
#include "Containers.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/NodeUtils.h"
#include "host/znOpenSGUtils/znNodePtr.h"
#include "host/znOpenSGUtils/znNodeUtils.h"

#include <algorithm>
#include <vector>

namespace osg
{

class ChildList
{
public:
    std::vector<Node*> nodes;
};

FieldContainerType Node::_type("Node", &AttachmentContainer::_type);

Node::Node() : m_children(std::make_unique<ChildList>()) {}

Node::~Node()
{
    NodeCorePtr(m_core).subRef();
    for (Node* child : m_children->nodes) {
        child->m_parent = nullptr;
        NodePtr(child).subRef();
    }
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
    NodeCorePtr(m_core).subRef();
    m_core = core.get();
}

NodePtr Node::getParent() const
{
    return NodePtr(m_parent);
}

unsigned Node::getNChildren() const
{
    return static_cast<unsigned>(m_children->nodes.size());
}

NodePtr Node::getChild(unsigned index) const
{
    return index < getNChildren() ? NodePtr(m_children->nodes[index]) : NodePtr();
}

void Node::addChild(const NodePtr& child)
{
    insertChild(getNChildren(), child);
}

void Node::insertChild(unsigned index, const NodePtr& child)
{
    if (!canTake(child))
        return;
    child.addRef();
    takeOut(child);
    child->m_parent = this;
    auto& nodes = m_children->nodes;
    nodes.insert(nodes.begin() + std::min<std::ptrdiff_t>(index, getNChildren()), child.get());
}

void Node::subChild(const NodePtr& child)
{
    if (child && child->m_parent == this)
        takeOut(child);
}

int Node::findChild(const NodePtr& child) const
{
    const auto& nodes = m_children->nodes;
    const auto found = std::find(nodes.begin(), nodes.end(), child.get());
    return found == nodes.end() ? -1 : static_cast<int>(found - nodes.begin());
}

void Node::setActive(bool active)
{
    m_active = active;
}

bool Node::canTake(const NodePtr& child) const
{
    for (const Node* node = this; child && node; node = node->m_parent)
        if (node == child.get())
            return false;
    return static_cast<bool>(child);
}

bool Node::takeOut(const NodePtr& child)
{
    Node* parent = child->m_parent;
    if (!parent)
        return false;
    std::erase(parent->m_children->nodes, child.get());
    child->m_parent = nullptr;
    child.subRef();
    return true;
}

bool Node::equalFields(const FieldContainer& other) const
{
    const auto& node = static_cast<const Node&>(other);
    return m_core == node.m_core && m_active == node.m_active && m_children->nodes == node.m_children->nodes;
}

FieldContainerPtr Node::copy() const
{
    const NodePtr copied = create();
    copied->setCore(getCore());
    copied->m_active = m_active;
    if (const char* name = getName(NodePtr(const_cast<Node*>(this))))
        setName(copied, name);
    return copied;
}

NodePtr makeNodeFor(const NodeCorePtr& core)
{
    const NodePtr node = Node::create();
    node->setCore(core);
    return node;
}

namespace
{

/// A copy of the nodes over the same cores.
NodePtr cloneNodes(const NodePtr& root, bool copyAttachments, const std::string& suffix)
{
    std::vector<std::pair<NodePtr, NodePtr>> open;
    const auto cloneOne = [&](const NodePtr& node) {
        const NodePtr cloned = makeNodeFor(node->getCore());
        cloned->setActive(node->isActive());
        if (const char* name = getName(node); name && copyAttachments)
            setName(cloned, name + suffix);
        open.emplace_back(node, cloned);
        return cloned;
    };
    if (!root)
        return {};
    const NodePtr result = cloneOne(root);
    while (!open.empty()) {
        const auto [node, cloned] = open.back();
        open.pop_back();
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            cloned->addChild(cloneOne(node->getChild(i)));
    }
    return result;
}

} // namespace

NodePtr cloneTree(const NodePtr& node, bool copyAttachments)
{
    return cloneNodes(node, copyAttachments, {});
}

/// Cores hold nothing here that one would change in place, so that copies go on sharing them.
NodePtr deepCloneTree(const NodePtr& node, const std::string& nameSuffix)
{
    return cloneNodes(node, true, nameSuffix);
}

Action::ResultE traverse(const NodePtr& root, const std::function<Action::ResultE(const NodePtr&)>& visitor)
{
    std::vector<NodePtr> open;
    if (root)
        open.push_back(root);
    while (!open.empty()) {
        const NodePtr node = open.back();
        open.pop_back();
        const Action::ResultE result = visitor(node);
        if (result == Action::Quit)
            return Action::Quit;
        for (unsigned i = result == Action::Skip ? 0 : node->getNChildren(); i > 0; --i)
            open.push_back(node->getChild(i - 1));
    }
    return Action::Continue;
}

} // namespace osg

znNodePtr::znNodePtr() = default;
znNodePtr::znNodePtr(const osg::NodePtr& node) : m_node(node)
{
    m_node.addRef();
}
znNodePtr::znNodePtr(const znNodePtr& other) : znNodePtr(other.m_node) {}
znNodePtr::~znNodePtr()
{
    m_node.subRef();
}
znNodePtr& znNodePtr::operator=(const znNodePtr& other)
{
    other.m_node.addRef();
    m_node.subRef();
    m_node = other.m_node;
    return *this;
}

void NodeUtils::setName(const osg::NodePtr& node, const char* name, bool replace)
{
    if (replace || !osg::getName(node))
        osg::setName(node, name);
}

// Nothing can be locked, and no asset is known.
bool znNodeUtils::getLock(const osg::NodePtr&)
{
    return false;
}
bool znNodeUtils::hasLockedParent(const osg::NodePtr&)
{
    return false;
}
bool znNodeUtils::isUneditedAssetRoot(const osg::NodePtr&)
{
    return false;
}

std::vector<std::string> znNodeUtils::getTags(const osg::NodePtr& node)
{
    const external::Notes* notes = external::findNotes(node);
    return notes ? std::vector<std::string>(notes->tags.begin(), notes->tags.end()) : std::vector<std::string>();
}

bool znNodeUtils::hasTag(const osg::NodePtr& node, const std::string& tag)
{
    const external::Notes* notes = external::findNotes(node);
    return notes && notes->tags.contains(tag);
}

void znNodeUtils::removeTag(const osg::NodePtr& node, const std::string& tag)
{
    if (external::Notes* notes = external::findNotes(node))
        notes->tags.erase(tag);
}

void znNodeUtils::removeTags(const osg::NodePtr& node, const std::vector<std::string>& tags)
{
    for (const std::string& tag : tags)
        removeTag(node, tag);
}

void znNodeUtils::getNodesWithTag(const osg::NodePtr& root, const std::string& tag, std::vector<znNodePtr>& nodes)
{
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (hasTag(node, tag))
            nodes.emplace_back(node);
        return osg::Action::Continue;
    });
}

const char* znNodeUtils::getName(const osg::NodePtr& node)
{
    return osg::getName(node);
}

void znNodeUtils::setName(const osg::NodePtr& node, const char* name, bool keep, std::string* formerName)
{
    const char* former = osg::getName(node);
    if (formerName)
        *formerName = former ? former : "";
    if (!keep || !former)
        osg::setName(node, name);
}

void znNodeUtils::setFileInfo(const osg::NodePtr& node, const char* fileName, const char*)
{
    external::notesOf(node).file = fileName;
}

void znNodeUtils::destroy(const osg::NodePtr& node)
{
    if (node && node->getParent())
        node->getParent()->subChild(node);
}
