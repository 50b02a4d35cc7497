#include "standalone/znOpenSGUberCamera/SessionCameras.h"

zn::CameraTree& zn::sessionCameras(Session& session)
{
    return session.state<CameraTree>();
}
