#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/ChildList.h"

#include <vector>

namespace osg
{

/// A node that was copied without its children, and its copy.
struct ClonePair {
    const Node* original;
    Node* clone;
};

/// Ways to build nodes without the checks that a fresh tree does not need.
struct NodeAccess {
    /// A new node with the same core and activity.
    static NodePtr copyWithoutChildren(const Node& node, bool copyAttachments);
    /// Gives `clone`, which has none, copies of the children of `original`, and notes each pair that has children
    /// itself.
    static void cloneChildren(const Node& original, Node& clone, bool copyAttachments, std::vector<ClonePair>& pending);
    /// Gives the place of `node`, which has a parent and children, to its children. The parent gives up its reference
    /// on the node, which has no children then. To be called within an edit of the children of the parent.
    static void replaceByChildren(const NodePtr& node);

    /// Null for a node without children.
    static const ChildList* children(const Node& node) { return node.m_children.get(); }

    ///@{
    /// Has the processor fetch what a walk will ask for soon, so that the walk does not wait for memory at each node: a
    /// large tree does not fit in the caches. Each looks at what the ones above it fetch.
    static void fetch(const Node& node) { __builtin_prefetch(&node); }
    static void fetchHeld(const Node& node)
    {
        __builtin_prefetch(node.m_core);
        __builtin_prefetch(node.m_children.get());
    }
    static void fetchPlaces(const Node& node)
    {
        if (node.m_children)
            node.m_children->fetchPlaces();
    }
    ///@}
    /// `fetch` and `fetchHeld` for the children of `node` that follow the one at `index`, of which there need be none.
    static void fetchChildrenAfter(const Node& node, unsigned index)
    {
        const unsigned count = node.m_children ? node.m_children->size() : 0;
        if (index + FarAhead < count)
            fetch(*node.m_children->at(index + FarAhead));
        if (index + NearAhead < count)
            fetchHeld(*node.m_children->at(index + NearAhead));
    }
    /// How many nodes before its turn a node is fetched, and what it holds.
    static constexpr unsigned FarAhead = 8, NearAhead = 4;
};

} // namespace osg
