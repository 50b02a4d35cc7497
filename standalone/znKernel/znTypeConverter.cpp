#include "host/znKernel/znTypeConverter.h"

#include "standalone/znKernelServices/WrappedNodes.h"

osg::NodePtr znTypeConverter::convertNode(const zndNode& node)
{
    return zn::nodeOf(node);
}

zndNode znTypeConverter::convertNode(const osg::NodePtr& node)
{
    return zndNode(node ? node->getContainerId() : 0);
}
