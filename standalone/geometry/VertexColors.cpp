#include "standalone/geometry/VertexColors.h"

#include "standalone/geometry/GeometryWalk.h"
#include "standalone/OSGSystem/SceneEdits.h"

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
