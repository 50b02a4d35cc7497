#pragma once

#include "standalone/session/Session.h"
#include "standalone/znOpenSGUberCamera/CameraTree.h"

namespace zn::cameras
{

/// The cameras of a session.
CameraTree& sessionCameras(Session& session = Session::require());

} // namespace zn::cameras
