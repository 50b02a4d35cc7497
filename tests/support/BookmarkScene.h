#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/Mesh.h"
#include "scene/Tags.h"

#include <memory>
#include <string>
#include <vector>

/// A car of boxes with bookmarks as the converter of a surface modeller leaves them: as tagged nodes.
///
/// "Car" has the parts "body" (grey), "roof" (of the switch material "Roof Glass" with "Clear", light blue, and
/// "Tinted", black; clear at first) and "roof box" (orange, hidden at first). The bookmark "Open Roof" in the group
/// "Exterior" takes the roof away and looks from above, "Night" tints the roof and looks from the side, "Journey" puts
/// the box on the roof and names no camera.
namespace bookmarkscene
{

inline osg::SimpleMaterialPtr paint(const char* name, const osg::Color3f& color)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    osg::setName(material, name);
    material->setDiffuse(color);
    return material;
}

inline osg::SwitchMaterialPtr roofGlass()
{
    const osg::SwitchMaterialPtr glass = osg::SwitchMaterialBase::create();
    osg::setName(glass, "Roof Glass");
    glass->addMaterial(paint("Clear", {0.6f, 0.8f, 1}));
    glass->addMaterial(paint("Tinted", {0.05f, 0.05f, 0.05f}));
    return glass;
}

/// The corners of a box in the order in which their bits count: x, y, z.
inline std::shared_ptr<const osg::Mesh> box(const osg::Vec3f& low, const osg::Vec3f& high)
{
    std::vector<osg::Vec3f> corners;
    for (unsigned i = 0; i < 8; ++i)
        corners.push_back({i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z});
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::move(corners);
    mesh->triangles = std::vector<std::uint32_t>{0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                                                 2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
    return mesh;
}

inline osg::NodePtr part(const char* name, const std::shared_ptr<const osg::Mesh>& mesh,
                         const osg::MaterialPtr& material, std::vector<std::string> tags = {})
{
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    osg::GeometryAccess::setMesh(*geometry, mesh);
    geometry->setMaterial(material);
    const osg::NodePtr node = osg::makeNodeFor(geometry);
    osg::setName(node, name);
    if (!tags.empty())
        osg::setTags(node, std::move(tags));
    return node;
}

inline osg::NodePtr bookmark(const char* name, std::vector<std::string> tags)
{
    const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
    osg::setName(node, name);
    tags.insert(tags.begin(), "stylar::bookmark");
    osg::setTags(node, std::move(tags));
    return node;
}

/// A perspective camera of 40 degrees, as a node with the tag `name`.
inline osg::NodePtr camera(const char* name, const osg::Matrix& placement)
{
    const osg::UberCameraPtr core = osg::UberCameraBase::create();
    core->setMatrix(placement);
    core->setFieldOfView(40);
    const osg::NodePtr node = osg::makeNodeFor(core);
    osg::setTags(node, {name});
    return node;
}

/// Looks down along -Z, with Y upwards in the picture.
inline constexpr osg::Matrix fromAbove = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2000, 800, 8000, 1}};
/// Looks along +Y, with Z upwards in the picture.
inline constexpr osg::Matrix fromTheSide = {{1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 2000, -7000, 700, 1}};

/// The root has no parent and the count 0.
inline osg::NodePtr make()
{
    const osg::NodePtr car = osg::makeNodeFor(osg::Group::create());
    osg::setName(car, "Car");
    car->addChild(part("body", box({0, 0, 0}, {4000, 1600, 900}), paint("Body", {0.5f, 0.5f, 0.5f})));
    car->addChild(part("roof", box({1000, 100, 900}, {3000, 1500, 1400}), roofGlass(),
                       {"stylar::bookmark_visibilities", "bookmark[Open Roof]:hidden", "bookmark[Night]:visible",
                        "bookmark[Journey]:visible", "fragile"}));
    const osg::NodePtr roofBox =
        part("roof box", box({1200, 400, 1400}, {2800, 1200, 1800}), paint("Box", {1, 0.4f, 0}),
             {"stylar::bookmark_visibilities", "bookmark[Open Roof]:hidden", "bookmark[Night]:hidden",
              "bookmark[Journey]:visible"});
    roofBox->setActive(false);
    car->addChild(roofBox);
    const osg::NodePtr open = bookmark("Open Roof", {"bookmark_group[Exterior]", "switch_shader[Roof Glass]:Clear"});
    open->addChild(camera("Camera1", fromAbove));
    const osg::NodePtr night = bookmark("Night", {"bookmark_group[Exterior]", "switch_shader[Roof Glass]:Tinted"});
    night->addChild(camera("Camera1", fromTheSide));
    for (const osg::NodePtr& node : {open, night, bookmark("Journey", {"switch_shader[Roof Glass]:Clear"})})
        car->addChild(node);
    return car;
}

} // namespace bookmarkscene
