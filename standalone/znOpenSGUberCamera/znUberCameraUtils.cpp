#include "host/znOpenSGUberCamera/znUberCameraUtils.h"

#include "host/OSGSystem/Names.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

QString freeName(const QString& name, unsigned ownId)
{
    QString free = name;
    for (int number = 2; zn::cameras::sessionCameras().isTaken(free, ownId); ++number)
        free = name + QLatin1Char(' ') + QString::number(number);
    return free;
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
    zn::cameras::sessionCameras().rename(camera, unique ? freeName(name, id) : name);
}
