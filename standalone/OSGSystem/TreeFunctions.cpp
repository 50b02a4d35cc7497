#include "host/OSGSystem/TreeFunctions.h"

#include "host/OSGSystem/Edit.h"
#include "standalone/OSGSystem/NodeAccess.h"

#include <vector>

namespace osg
{

namespace
{

struct CloneStep {
    const Node* original;
    Node* clone;
};

NodePtr cloneNode(const Node& node, bool copyAttachments)
{
    const NodePtr clone = NodeAccess::copyWithoutChildren(node, copyAttachments);
    NodeAccess::reserveChildren(*clone, node.getNChildren());
    return clone;
}

struct WalkStep {
    NodePtr node;
    unsigned nextChild;
};

} // namespace

NodePtr cloneTree(const NodePtr& node, bool copyAttachments)
{
    if (!node)
        return NodePtr();
    const NodePtr root = cloneNode(*node, copyAttachments);
    std::vector<CloneStep> pending = {{node.get(), root.get()}};
    while (!pending.empty()) {
        const CloneStep step = pending.back();
        pending.pop_back();
        for (unsigned i = 0; i < step.original->getNChildren(); ++i) {
            const NodePtr child = step.original->getChild(i);
            const NodePtr clone = cloneNode(*child, copyAttachments);
            NodeAccess::append(*step.clone, *clone);
            if (child->getNChildren() != 0)
                pending.push_back({child.get(), clone.get()});
        }
    }
    return root;
}

NodePtr makeNodeFor(const NodeCorePtr& core)
{
    const NodePtr node = Node::create();
    beginEditCP(node, Node::CoreFieldMask, 1);
    node->setCore(core);
    endEditCP(node, Node::CoreFieldMask, 1);
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
