#include "host/znOpenSGUberCamera/znUberCameraUtils.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

bool isTaken(const QString& name, unsigned exceptId)
{
    for (const zn::cameras::CameraTree::Entry& entry : zn::cameras::sessionCameras().entries())
        if (entry.cameraId != exceptId &&
            znUberCameraUtils::getName(zn::cameras::CameraTree::cameraOf(entry.cameraId)) == name)
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
    for (const zn::cameras::CameraTree::Entry& entry : zn::cameras::sessionCameras().entries())
        if (entry.cameraId == cameraId)
            osg::setName(osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(entry.nodeId)), name);
}

} // namespace

QString znUberCameraUtils::getName(const osg::UberCameraPtr& camera)
{
    return QString::fromUtf8(osg::getName(camera));
}

void znUberCameraUtils::setName(const osg::UberCameraPtr& camera, const QString& name, bool unique)
{
    const unsigned id = camera ? camera->getContainerId() : 0;
    const zn::TracedCall call("znUberCameraUtils::setName", id, name, unique);
    if (!camera)
        return;
    const std::string text = (unique ? freeName(name, id) : name).toStdString();
    osg::setName(camera, text);
    nameNodeOf(id, text);
}
