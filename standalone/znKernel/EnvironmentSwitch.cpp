#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znScenegraph.h"
#include "standalone/OSGSystem/Bounds.h"
#include "standalone/OSGSystem/Mesh.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znOpenSGUtils/NodesBesideScene.h"
#include "standalone/znUtils/CallTrace.h"

#include <algorithm>

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

/// Null while there is nothing that a ground could lie under.
osg::NodePtr makeGround()
{
    const osg::Box box = osg::worldBounds(znScenegraph::getRoot());
    if (box.isEmpty())
        return {};
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    osg::GeometryAccess::setMesh(*geometry, std::make_shared<const osg::Mesh>(groundBelow(box)));
    const osg::NodePtr ground = osg::makeNodeFor(geometry);
    osg::setName(ground, "Ground");
    return ground;
}

} // namespace

osg::NodePtr znScenegraph::environmentGeometrySwitch()
{
    const zn::TracedCall call("znScenegraph::environmentGeometrySwitch");
    return zn::nodesBesideScene().environmentSwitch;
}

osg::NodePtr znScenegraph::createEnvironmentGeometrySwitch(const osg::NodePtr& content)
{
    const zn::TracedCall call("znScenegraph::createEnvironmentGeometrySwitch", content);
    const osg::NodePtr made = osg::makeNodeFor(osg::Group::create());
    osg::setName(made, "EnvironmentGeometrySwitch");
    made->setActive(false);
    made->addChild(content ? content : makeGround());
    zn::nodesBesideScene().environmentSwitch = made;
    return made;
}
