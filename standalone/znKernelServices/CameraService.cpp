#include "standalone/znKernelServices/CameraService.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "scene/SceneEdits.h"
#include "standalone/session/Session.h"
#include "standalone/znKernelServices/WrappedNodes.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

osg::NodePtr makeCamera(const QString& name, int projection)
{
    const osg::UberCameraPtr camera = osg::UberCameraBase::create();
    const osg::NodePtr node = osg::makeNodeFor(camera);
    zn::cameras::sessionCameras().list(camera, node);
    znUberCameraUtils::setName(camera, name, false);
    if (projection == osg::UberCameraBase::Parallel) {
        osg::beginEditCP(camera, osg::UberCameraBase::ProjectionFieldMask, 1);
        camera->setProjection(osg::UberCameraBase::Parallel);
        osg::endEditCP(camera, osg::UberCameraBase::ProjectionFieldMask, 1);
    }
    osg::addChild(zn::cameras::sessionCameras().root(), node);
    return node;
}

class CameraService final : public znCameraService
{
public:
    zndCameraNode createCamera(const QString& name, int projection) override
    {
        const zn::TracedCall call("znCameraService::createCamera", name, projection);
        const osg::NodePtr known = zn::cameras::sessionCameras().findCamera(name);
        return zndCameraNode((known ? known : makeCamera(name, projection))->getContainerId());
    }

    zndNode createCameraTrack(const QString& name, const zndCameraNode& camera) override
    {
        const zn::TracedCall call("znCameraService::createCameraTrack", name, camera.getObjectId());
        if (!zn::services::cameraOf(camera))
            return {};
        const osg::NodePtr track = osg::makeNodeFor(osg::Group::create());
        osg::setName(track, name.toStdString());
        osg::addChild(zn::services::nodeOf(camera), track);
        return zndNode(track->getContainerId());
    }

    zndCameraBaseNode findViewpoint(const QString& name) override
    {
        const zn::TracedCall call("znCameraService::findViewpoint", name);
        return zndCameraBaseNode(zn::cameras::sessionCameras().findViewpoint(name).nodeId);
    }
};

} // namespace

std::unique_ptr<znCameraService> zn::services::makeCameraService()
{
    return std::make_unique<CameraService>();
}
