#include "geometry/TreeRepair.h"

#include "geometry/IndexRepair.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

namespace geometry
{

std::vector<GeometryNote> repairMeshes(const osg::NodePtr& root)
{
    std::vector<GeometryNote> notes;
    for (const osg::GeometryPtr& geometry : geometriesBelow(root)) {
        const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
        if (isSound(mesh))
            continue;
        Repaired result = repaired(mesh);
        notes.push_back({geometry, result.changes.join(QStringLiteral("; "))});
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(result.mesh)));
    }
    return notes;
}

} // namespace geometry
