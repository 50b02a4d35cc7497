#pragma once

#include "host/OSGSystem/Node.h"

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
};

} // namespace osg
