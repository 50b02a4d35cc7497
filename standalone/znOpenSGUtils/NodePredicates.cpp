#include "standalone/znOpenSGUtils/NodePredicates.h"

#include "scene/NodeProperties.h"
#include "standalone/session/Session.h"

namespace zn::nodes
{

namespace
{

using Predicate = std::function<bool(const osg::NodePtr& node)>;

/// What stands in for a predicate in the living session; null for nothing.
const Predicate* standIn(Predicate NodePredicates::*predicate)
{
    if (!Session::current())
        return nullptr;
    const Predicate& other = nodePredicates().*predicate;
    return other ? &other : nullptr;
}

} // namespace

NodePredicates& nodePredicates()
{
    return Session::require().state<NodePredicates>();
}

bool isLocked(const osg::NodePtr& node)
{
    if (const Predicate* other = standIn(&NodePredicates::getLock))
        return (*other)(node);
    const osg::NodeProperties::Ptr properties = osg::NodeProperties::of(node);
    return properties && properties->isLocked();
}

bool hasLockedAncestor(const osg::NodePtr& node)
{
    if (const Predicate* other = standIn(&NodePredicates::hasLockedParent))
        return (*other)(node);
    if (!node)
        return false;
    for (osg::NodePtr parent = node->getParent(); parent; parent = parent->getParent())
        if (isLocked(parent))
            return true;
    return false;
}

bool isUneditedAssetRoot(const osg::NodePtr& node)
{
    if (const Predicate* other = standIn(&NodePredicates::isUneditedAssetRoot))
        return (*other)(node);
    const osg::NodeProperties::Ptr properties = osg::NodeProperties::of(node);
    return properties && properties->asset() == osg::NodeProperties::Asset::Root;
}

} // namespace zn::nodes
