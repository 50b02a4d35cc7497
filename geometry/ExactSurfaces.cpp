#include "geometry/ExactSurfaces.h"

#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

void geometry::removeExactSurfaces(const osg::NodePtr& root)
{
    for (const osg::GeometryPtr& geometry : geometriesBelow(root)) {
        if (osg::GeometryAccess::mesh(*geometry).brep.empty())
            continue;
        osg::Mesh mesh = osg::GeometryAccess::mesh(*geometry);
        mesh.brep = {};
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(mesh)));
    }
}
