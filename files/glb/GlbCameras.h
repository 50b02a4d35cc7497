#pragma once

#include "files/glb/GlbJson.h"
#include "host/znOpenSGUberCamera/UberCamera.h"

namespace files::glb
{

/// The cameras of a file. Lengths are in its unit; optics that no camera can have become those of a new camera.
class GlbCameras
{
public:
    explicit GlbCameras(double millimetresPerUnit) : m_millimetresPerUnit(millimetresPerUnit) {}

    std::size_t add(const osg::UberCameraPtr& camera);
    const JsonList& list() const { return m_list; }

private:
    double m_millimetresPerUnit;
    JsonList m_list;
};

} // namespace files::glb
