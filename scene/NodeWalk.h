#pragma once

#include "scene/NodeAccess.h"

#include <vector>

namespace osg
{

/// Calls `visit` for the node and all below it, each parent before its children, as `parentsFirst` gives them, and
/// returns them. `visit` changes no children.
template <class Visit>
std::vector<osg::NodePtr> visitParentsFirst(const osg::NodePtr& root, const Visit& visit)
{
    std::vector<osg::NodePtr> nodes;
    if (root)
        nodes.push_back(root);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (i + NodeAccess::FarAhead < nodes.size())
            NodeAccess::fetch(*nodes[i + NodeAccess::FarAhead]);
        if (i + NodeAccess::NearAhead < nodes.size())
            NodeAccess::fetchHeld(*nodes[i + NodeAccess::NearAhead]);
        const osg::NodePtr node = nodes[i];
        visit(node);
        for (unsigned child = 0, count = node->getNChildren(); child < count; ++child)
            nodes.push_back(node->getChild(child));
    }
    return nodes;
}

/// The node and all below it, each parent before its children; empty for null. Valid while no node of it is destroyed;
/// a node that dissolves from the end on never appears again.
inline std::vector<osg::NodePtr> parentsFirst(const osg::NodePtr& root)
{
    return visitParentsFirst(root, [](const osg::NodePtr&) {});
}

} // namespace osg
