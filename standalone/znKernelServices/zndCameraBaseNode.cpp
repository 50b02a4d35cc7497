#include "host/znKernelServices/zndCameraBaseNode.h"

#include "standalone/znKernelServices/WrappedNodes.h"

std::uint64_t zndCameraBaseNode::getId() const
{
    const osg::UberCameraPtr camera = zn::services::cameraOf(*this);
    return camera ? camera->getContainerId() : 0;
}
