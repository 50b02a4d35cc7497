#include "host/znKernel/znTypeConverter.h"

#include "standalone/znKernelServices/WrappedNodes.h"
#include "standalone/znUtils/CallTrace.h"

osg::NodePtr znTypeConverter::convertNode(const zndNode& node)
{
    const zn::TracedCall call("znTypeConverter::convertNode", node.getObjectId());
    return zn::services::nodeOf(node);
}

zndNode znTypeConverter::convertNode(const osg::NodePtr& node)
{
    const zn::TracedCall call("znTypeConverter::convertNode", node);
    return zndNode(node ? node->getContainerId() : 0);
}
