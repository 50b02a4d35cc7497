#include "geometry/TreeTriangulation.h"

#include "geometry/MeshTriangulation.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <QCoreApplication>

namespace geometry
{

namespace
{

QString leftOutText(std::size_t count)
{
    return QCoreApplication::translate("TreeTriangulation",
                                       "%1 polygons or strips name vertices that are not there and were left out")
        .arg(static_cast<qulonglong>(count));
}

/// @return how many primitives were left out
std::size_t triangulateGeometry(const osg::GeometryPtr& geometry, bool dropFlat)
{
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
    if (mesh.primitives.empty() && !dropFlat)
        return 0;
    Triangulated result{mesh};
    if (!mesh.primitives.empty())
        result = triangulated(mesh);
    if (dropFlat)
        result.mesh = withoutFlatTriangles(result.mesh);
    if (!mesh.primitives.empty() || result.mesh.triangles.size() != mesh.triangles.size())
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(result.mesh)));
    return result.leftOut;
}

} // namespace

std::vector<GeometryNote> triangulate(const osg::NodePtr& root, bool dropFlat)
{
    std::vector<GeometryNote> notes;
    for (const osg::GeometryPtr& geometry : geometriesBelow(root))
        if (const std::size_t leftOut = triangulateGeometry(geometry, dropFlat))
            notes.push_back({geometry, leftOutText(leftOut)});
    return notes;
}

} // namespace geometry
