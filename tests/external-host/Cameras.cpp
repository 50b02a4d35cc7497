// The cameras that somebody hands over; this host makes none.
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/znKernelServices/zndCameraNode.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "host/znOpenSGUberCamera/znUberCameraPool.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"

#include <set>

namespace osg
{
FieldContainerType UberCameraBase::_type("UberCamera", &Transform3DBase::_type);
}

namespace
{
std::set<unsigned>& knownCameras()
{
    static std::set<unsigned> cameras;
    return cameras;
}
} // namespace

znUberCameraPool* znUberCameraPool::the()
{
    static znUberCameraPool pool;
    return &pool;
}

osg::UberCameraPtr znUberCameraPool::get(unsigned id)
{
    if (!knownCameras().contains(id))
        return {};
    return osg::fcCast<osg::UberCamera>(osg::FieldContainerFactory::the()->getContainer(id));
}

void znUberCameraPool::add(const osg::UberCameraPtr& camera, const osg::NodePtr&)
{
    knownCameras().insert(camera->getContainerId());
}

void znUberCameraPool::remove(const osg::UberCameraPtr& camera)
{
    knownCameras().erase(camera->getContainerId());
}

QString znUberCameraUtils::getName(const osg::UberCameraPtr& camera)
{
    return QString::fromUtf8(osg::getName(camera));
}

void znUberCameraUtils::setName(const osg::UberCameraPtr& camera, const QString& name, bool)
{
    osg::setName(camera, name.toStdString());
}

std::uint64_t zndCameraBaseNode::getId() const
{
    return getObjectId();
}

zndNode zndCameraNode::getDefaultCameraTrack() const
{
    return zndNode();
}
