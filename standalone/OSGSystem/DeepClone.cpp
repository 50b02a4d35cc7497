#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/OSGSystem/ContainerRegistry.h"

#include <unordered_map>

namespace osg
{

namespace
{

/// Copies of cores, one for each original however many nodes share it.
class CoreCopies
{
public:
    NodeCorePtr copyOf(const NodeCorePtr& original)
    {
        NodeCorePtr& copied = m_copies[original.get()];
        if (!copied)
            copied = NodeCorePtr(static_cast<NodeCore*>(ContainerAccess::copy(*original).get()));
        return copied;
    }

private:
    std::unordered_map<const NodeCore*, NodeCorePtr> m_copies;
};

void giveOwnCore(const NodePtr& node, CoreCopies& copies)
{
    if (!node->getCore())
        return;
    beginEditCP(node, Node::CoreFieldMask, 1);
    node->setCore(copies.copyOf(node->getCore()));
    endEditCP(node, Node::CoreFieldMask, 1);
}

void appendToName(const NodePtr& node, const std::string& suffix)
{
    const char* name = getName(node);
    if (name && !suffix.empty())
        setName(node, name + suffix);
}

} // namespace

NodePtr deepCloneTree(const NodePtr& node, const std::string& nameSuffix)
{
    const NodePtr root = cloneTree(node, true);
    CoreCopies copies;
    traverse(root, [&](const NodePtr& step) {
        if (!step)
            return Action::Skip;
        giveOwnCore(step, copies);
        appendToName(step, nameSuffix);
        return Action::Continue;
    });
    return root;
}

} // namespace osg
