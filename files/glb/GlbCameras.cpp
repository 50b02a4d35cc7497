#include "files/glb/GlbCameras.h"
#include "files/glb/GlbNumbers.h"

#include "host/OSGSystem/Names.h"
#include "scene/ViewTags.h"

#include <cmath>
#include <numbers>

namespace files::glb
{

namespace
{

float sensible(float value, float least, float most, float instead)
{
    return value > least && value < most ? value : instead;
}

/// Lengths in the unit of the file.
struct Lengths {
    double millimetresPerUnit;

    float operator()(float millimetres, float instead) const
    {
        return static_cast<float>(sensible(millimetres, 0, 1e12f, instead) / millimetresPerUnit);
    }
};

Json perspective(const osg::UberCamera& camera, float aspect, const Lengths& length)
{
    const float near = length(camera.getNear(), 1);
    const float degrees = sensible(camera.getFieldOfView(), 0, 180, 45);
    Json json = {{"yfov", sixDigits(degrees * std::numbers::pi / 180)}, {"znear", near}};
    if (const float far = length(camera.getFar(), 0); far > near)
        json["zfar"] = far;
    if (aspect > 0)
        json["aspectRatio"] = aspect;
    return json;
}

/// As a viewer has them, whose unit is that of the file.
Json sectionsOf(const osg::ViewFacts& facts, double millimetresPerUnit)
{
    Json sections = Json::array();
    for (const osg::HalfSpace& half : facts.sections)
        sections.push_back({half[0], half[1], half[2], static_cast<float>(half[3] / millimetresPerUnit)});
    return sections;
}

/// The width is up to the viewer, who knows the shape of the picture; a file has to tell one.
Json orthographic(const osg::UberCamera& camera, float aspect, const Lengths& length)
{
    const float half = length(camera.getHeight(), 1000) / 2;
    const float near = length(camera.getNear(), 0);
    const float far = length(camera.getFar(), 0);
    return {{"xmag", half * sensible(aspect, 1e-3f, 1e3f, 1)},
            {"ymag", half},
            {"znear", near},
            {"zfar", far > near ? far : near + length(1e6f, 0)}};
}

} // namespace

std::size_t GlbCameras::add(const osg::UberCameraPtr& camera)
{
    const osg::ViewFacts facts = osg::viewFactsOf(camera);
    const bool isParallel = camera->getProjection() == osg::UberCameraBase::Parallel;
    Json json = {{"type", isParallel ? "orthographic" : "perspective"}};
    if (isParallel)
        json["orthographic"] = orthographic(*camera, facts.aspect, {m_millimetresPerUnit});
    else
        json["perspective"] = perspective(*camera, facts.aspect, {m_millimetresPerUnit});
    if (!facts.sections.empty())
        json["extras"]["sections"] = sectionsOf(facts, m_millimetresPerUnit);
    if (facts.areAnnotationsInFront)
        json["extras"]["annotationsInFront"] = true;
    if (const char* name = osg::getName(camera))
        json["name"] = name;
    return m_list.add(json);
}

} // namespace files::glb
