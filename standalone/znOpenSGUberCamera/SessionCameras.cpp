#include "standalone/znOpenSGUberCamera/SessionCameras.h"

zn::cameras::CameraTree& zn::cameras::sessionCameras(Session& session)
{
    return session.state<CameraTree>();
}
