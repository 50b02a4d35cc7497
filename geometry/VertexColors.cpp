#include "geometry/VertexColors.h"

#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

void geometry::removeVertexColors(const osg::NodePtr& root)
{
    for (const osg::GeometryPtr& geometry : geometriesBelow(root)) {
        if (osg::GeometryAccess::mesh(*geometry).colors.empty())
            continue;
        osg::Mesh mesh = osg::GeometryAccess::mesh(*geometry);
        mesh.colors = {};
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(mesh)));
    }
}
