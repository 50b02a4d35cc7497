#pragma once

#include "host/znOpenSGUberCamera/UberCamera.h"
#include "standalone/export/GlbJson.h"

namespace glb
{

/// The cameras of a file. Lengths become metres; optics that no camera can have become those of a new camera.
class GlbCameras
{
public:
    std::size_t add(const osg::UberCameraPtr& camera);
    const JsonList& list() const { return m_list; }

private:
    JsonList m_list;
};

} // namespace glb
