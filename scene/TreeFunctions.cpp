#include "host/OSGSystem/TreeFunctions.h"

#include "scene/DeepClone.h"
#include "scene/NodeAccess.h"
#include "scene/SceneEdits.h"

#include <vector>

namespace osg
{

namespace
{

struct WalkStep {
    NodePtr node;
    unsigned nextChild;
};

} // namespace

NodePtr cloneTree(const NodePtr& node, bool copyAttachments)
{
    if (!node)
        return NodePtr();
    const NodePtr root = NodeAccess::copyWithoutChildren(*node, copyAttachments);
    std::vector<ClonePair> pending;
    if (node->getNChildren() != 0)
        pending.push_back({node.get(), root.get()});
    while (!pending.empty()) {
        const ClonePair pair = pending.back();
        pending.pop_back();
        NodeAccess::cloneChildren(*pair.original, *pair.clone, copyAttachments, pending);
    }
    return root;
}

NodePtr deepCloneTree(const NodePtr& node, const std::string& nameSuffix)
{
    const NodePtr root = cloneTree(node, true);
    partFromOriginal(root, nameSuffix);
    return root;
}

NodePtr makeNodeFor(const NodeCorePtr& core)
{
    const NodePtr node = Node::create();
    exchangeCore(node, core);
    return node;
}

Action::ResultE traverse(const NodePtr& node, const std::function<Action::ResultE(const NodePtr&)>& visitor)
{
    const Action::ResultE first = visitor(node);
    if (first != Action::Continue || !node)
        return first;
    std::vector<WalkStep> path = {{node, 0}};
    while (!path.empty()) {
        WalkStep& step = path.back();
        if (step.nextChild >= step.node->getNChildren()) {
            path.pop_back();
            continue;
        }
        NodeAccess::fetchChildrenAfter(*step.node, step.nextChild);
        const NodePtr child = step.node->getChild(step.nextChild++);
        const Action::ResultE result = visitor(child);
        if (result == Action::Quit)
            return result;
        if (result == Action::Continue)
            path.push_back({child, 0});
    }
    return Action::Continue;
}

} // namespace osg
