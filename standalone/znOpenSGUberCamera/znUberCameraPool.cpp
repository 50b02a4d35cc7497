#include "host/znOpenSGUberCamera/znUberCameraPool.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "standalone/OSGSystem/SceneEdits.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

zn::CameraTree& cameras()
{
    return znStandaloneSession::require().kernel().cameras;
}

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

bool isTaken(const QString& name, unsigned exceptId)
{
    for (const zn::CameraTree::Entry& entry : cameras().entries())
        if (entry.cameraId != exceptId && znUberCameraUtils::getName(zn::CameraTree::cameraOf(entry.cameraId)) == name)
            return true;
    return false;
}

QString freeName(const QString& name, unsigned ownId)
{
    QString free = name;
    for (int number = 2; isTaken(free, ownId); ++number)
        free = name + QLatin1Char(' ') + QString::number(number);
    return free;
}

/// The node that bears the camera goes by the same name.
void nameNodeOf(unsigned cameraId, const std::string& name)
{
    for (const zn::CameraTree::Entry& entry : cameras().entries())
        if (entry.cameraId == cameraId)
            osg::setName(osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(entry.nodeId)), name);
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
    for (const zn::CameraTree::Entry& entry : cameras().entries())
        if (entry.cameraId == id)
            return zn::CameraTree::cameraOf(id);
    return {};
}

void znUberCameraPool::add(const osg::UberCameraPtr& camera, const osg::NodePtr& parent)
{
    const zn::TracedCall call("znUberCameraPool::add", idOf(camera), parent);
    if (camera)
        cameras().list(camera, parent ? hang(camera, parent) : osg::NodePtr());
}

void znUberCameraPool::remove(const osg::UberCameraPtr& camera)
{
    const zn::TracedCall call("znUberCameraPool::remove", idOf(camera));
    cameras().unlist(idOf(camera));
}

std::size_t znUberCameraPool::getNumCameras() const
{
    return cameras().entries().size();
}

QString znUberCameraUtils::getName(const osg::UberCameraPtr& camera)
{
    return QString::fromUtf8(osg::getName(camera));
}

void znUberCameraUtils::setName(const osg::UberCameraPtr& camera, const QString& name, bool unique)
{
    const zn::TracedCall call("znUberCameraUtils::setName", idOf(camera), name, unique);
    if (!camera)
        return;
    const std::string text = (unique ? freeName(name, idOf(camera)) : name).toStdString();
    osg::setName(camera, text);
    nameNodeOf(idOf(camera), text);
}
