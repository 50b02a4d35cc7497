#pragma once

#include "host/OSGSystem/Node.h"

namespace osg
{

/// Ways to build nodes without the checks that a fresh tree does not need.
struct NodeAccess {
    /// A new node with the same core and activity.
    static NodePtr copyWithoutChildren(const Node& node, bool copyAttachments);
    /// Makes room for `count` children in all.
    static void reserveChildren(Node& node, unsigned count);
    /// Appends a fresh `child`, which has no parent. Room was reserved.
    static void append(Node& parent, Node& child);
};

} // namespace osg
