#include "host/znKernelServices/zndCameraNode.h"

#include "host/OSGSystem/Cast.h"
#include "standalone/znKernelServices/WrappedNodes.h"
#include "standalone/znUtils/CallTrace.h"

zndNode zndCameraNode::getDefaultCameraTrack() const
{
    const zn::TracedCall call("zndCameraNode::getDefaultCameraTrack", getObjectId());
    const osg::NodePtr node = zn::services::nodeOf(*this);
    for (unsigned i = 0; node && i < node->getNChildren(); ++i)
        if (!osg::fcCast<osg::UberCamera>(node->getChild(i)->getCore()))
            return zndNode(node->getChild(i)->getContainerId());
    return {};
}
