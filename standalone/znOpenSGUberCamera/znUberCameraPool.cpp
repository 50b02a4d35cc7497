#include "host/znOpenSGUberCamera/znUberCameraPool.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "scene/SceneEdits.h"
#include "standalone/session/Session.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

unsigned idOf(const osg::UberCameraPtr& camera)
{
    return camera ? camera->getContainerId() : 0;
}

/// A node for `camera` as the last child of `parent`.
osg::NodePtr hang(const osg::UberCameraPtr& camera, const osg::NodePtr& parent)
{
    const osg::NodePtr node = osg::makeNodeFor(camera);
    osg::setName(node, znUberCameraUtils::getName(camera).toStdString());
    osg::addChild(parent, node);
    return node;
}

} // namespace

znUberCameraPool* znUberCameraPool::the()
{
    static znUberCameraPool pool;
    return &pool;
}

osg::UberCameraPtr znUberCameraPool::get(unsigned id)
{
    const zn::TracedCall call("znUberCameraPool::get", id);
    return zn::cameras::CameraTree::cameraOf(zn::cameras::sessionCameras().find(id).cameraId);
}

void znUberCameraPool::add(const osg::UberCameraPtr& camera, const osg::NodePtr& parent)
{
    const zn::TracedCall call("znUberCameraPool::add", idOf(camera), parent);
    if (camera)
        zn::cameras::sessionCameras().list(camera, parent ? hang(camera, parent) : osg::NodePtr());
}

void znUberCameraPool::remove(const osg::UberCameraPtr& camera)
{
    const zn::TracedCall call("znUberCameraPool::remove", idOf(camera));
    zn::cameras::sessionCameras().unlist(idOf(camera));
}

std::size_t znUberCameraPool::getNumCameras() const
{
    return zn::cameras::sessionCameras().entries().size();
}
