#include "host/znOpenSGUtils/znNodeUtils.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znOpenSGUtils/NodeProperties.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

using Predicate = std::function<bool(const osg::NodePtr& node)>;

/// What stands in for a predicate in the living session; null for nothing.
const Predicate* standIn(Predicate zn::NodePredicates::*predicate)
{
    const znStandaloneSession* session = znStandaloneSession::current();
    if (!session || !(session->kernel().nodePredicates.*predicate))
        return nullptr;
    return &(session->kernel().nodePredicates.*predicate);
}

} // namespace

bool znNodeUtils::getLock(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getLock", node);
    if (const Predicate* other = standIn(&zn::NodePredicates::getLock))
        return (*other)(node);
    const osg::NodeProperties::Ptr properties = osg::NodeProperties::of(node);
    return properties && properties->isLocked();
}

bool znNodeUtils::hasLockedParent(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::hasLockedParent", node);
    if (const Predicate* other = standIn(&zn::NodePredicates::hasLockedParent))
        return (*other)(node);
    if (!node)
        return false;
    for (osg::NodePtr parent = node->getParent(); parent; parent = parent->getParent())
        if (getLock(parent))
            return true;
    return false;
}

bool znNodeUtils::isUneditedAssetRoot(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::isUneditedAssetRoot", node);
    if (const Predicate* other = standIn(&zn::NodePredicates::isUneditedAssetRoot))
        return (*other)(node);
    const osg::NodeProperties::Ptr properties = osg::NodeProperties::of(node);
    return properties && properties->asset() == osg::NodeProperties::Asset::Root;
}
