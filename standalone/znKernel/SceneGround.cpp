#include "standalone/znKernel/SceneGround.h"

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Bounds.h"
#include "scene/Mesh.h"

#include <algorithm>

namespace zn::kernel
{

namespace
{

/// How much of the scene's longer side the ground reaches beyond it on each side.
constexpr double margin = 0.5;

/// A square below the middle of the box.
osg::Mesh groundBelow(const osg::Box& box)
{
    const double half = (0.5 + margin) * std::max(box.size(0), box.size(1));
    const auto left = float(box.middle(0) - half), right = float(box.middle(0) + half);
    const auto front = float(box.middle(1) - half), back = float(box.middle(1) + half);
    const auto height = float(box.low[2]);
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{
        {left, front, height}, {right, front, height}, {right, back, height}, {left, back, height}};
    mesh.normals = std::vector<osg::Vec3f>(4, {0, 0, 1});
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
    return mesh;
}

} // namespace

osg::NodePtr makeGroundBelow(const osg::NodePtr& root)
{
    const osg::Box box = osg::worldBounds(root);
    if (box.isEmpty())
        return {};
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    osg::GeometryAccess::setMesh(*geometry, std::make_shared<const osg::Mesh>(groundBelow(box)));
    const osg::NodePtr ground = osg::makeNodeFor(geometry);
    osg::setName(ground, "Ground");
    return ground;
}

} // namespace zn::kernel
