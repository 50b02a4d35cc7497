#pragma once

#include "host/OSGSystem/Node.h"

#include <vector>

namespace osg
{

/// The node and all below it, each parent before its children; empty for null. Valid while no node of it is destroyed;
/// a node that dissolves from the end on never appears again.
inline std::vector<osg::NodePtr> parentsFirst(const osg::NodePtr& root)
{
    std::vector<osg::NodePtr> nodes;
    if (root)
        nodes.push_back(root);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const osg::NodePtr node = nodes[i];
        for (unsigned child = 0; child < node->getNChildren(); ++child)
            nodes.push_back(node->getChild(child));
    }
    return nodes;
}

} // namespace osg
