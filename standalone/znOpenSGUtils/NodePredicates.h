#pragma once

#include "host/OSGSystem/Node.h"

#include <functional>

namespace zn::nodes
{

/// Answers of the living session that stand in for what nodes say themselves, for hosts that know better; empty ones
/// stand for nothing.
struct NodePredicates {
    std::function<bool(const osg::NodePtr& node)> getLock;
    std::function<bool(const osg::NodePtr& node)> hasLockedParent;
    std::function<bool(const osg::NodePtr& node)> isUneditedAssetRoot;
};
NodePredicates& nodePredicates();

///@{
/// What the session answers; without one, or without an answer of its own, what the node itself says. A null node has
/// no property.
bool isLocked(const osg::NodePtr& node);
bool hasLockedAncestor(const osg::NodePtr& node);
bool isUneditedAssetRoot(const osg::NodePtr& node);
///@}

} // namespace zn::nodes
