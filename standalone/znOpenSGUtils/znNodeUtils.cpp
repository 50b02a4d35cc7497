#include "host/znOpenSGUtils/znNodeUtils.h"

#include "standalone/znOpenSGUtils/NodeProperties.h"

bool znNodeUtils::getLock(const osg::NodePtr& node)
{
    const osg::NodeProperties::Ptr properties = osg::NodeProperties::of(node);
    return properties && properties->isLocked();
}

bool znNodeUtils::hasLockedParent(const osg::NodePtr& node)
{
    if (!node)
        return false;
    for (osg::NodePtr parent = node->getParent(); parent; parent = parent->getParent())
        if (getLock(parent))
            return true;
    return false;
}

bool znNodeUtils::isUneditedAssetRoot(const osg::NodePtr& node)
{
    const osg::NodeProperties::Ptr properties = osg::NodeProperties::of(node);
    return properties && properties->asset() == osg::NodeProperties::Asset::Root;
}
