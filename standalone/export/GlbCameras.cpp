#include "standalone/export/GlbCameras.h"

#include "host/OSGSystem/Names.h"

#include <cmath>
#include <numbers>

namespace glb
{

namespace
{

constexpr float metresPerMillimetre = 0.001f;

float sensible(float value, float least, float most, float instead)
{
    return value > least && value < most ? value : instead;
}

float metres(float millimetres, float instead)
{
    return sensible(millimetres, 0, 1e12f, instead) * metresPerMillimetre;
}

Json perspective(const osg::UberCamera& camera)
{
    const float near = metres(camera.getNear(), 1);
    const float degrees = sensible(camera.getFieldOfView(), 0, 180, 45);
    Json json = {{"yfov", degrees * std::numbers::pi_v<float> / 180}, {"znear", near}};
    if (const float far = metres(camera.getFar(), 0); far > near)
        json["zfar"] = far;
    return json;
}

/// The width is up to the viewer, who knows the shape of the picture; a file has to tell one.
Json orthographic(const osg::UberCamera& camera)
{
    const float half = metres(camera.getHeight(), 1000) / 2;
    const float near = metres(camera.getNear(), 0);
    const float far = metres(camera.getFar(), 0);
    return {{"xmag", half}, {"ymag", half}, {"znear", near}, {"zfar", far > near ? far : near + 1000}};
}

} // namespace

std::size_t GlbCameras::add(const osg::UberCameraPtr& camera)
{
    const bool isParallel = camera->getProjection() == osg::UberCameraBase::Parallel;
    Json json = {{"type", isParallel ? "orthographic" : "perspective"}};
    if (isParallel)
        json["orthographic"] = orthographic(*camera);
    else
        json["perspective"] = perspective(*camera);
    if (const char* name = osg::getName(camera))
        json["name"] = name;
    return m_list.add(json);
}

} // namespace glb
