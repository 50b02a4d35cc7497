#pragma once

#include "scene/Mesh.h"

#include <memory>
#include <optional>
#include <span>

namespace geometry
{

/// What two meshes must have in common to be joined without a loss.
struct MeshMake {
    bool hasNormals = false;
    bool hasTexCoords = false;
    bool hasTexCoords1 = false;
    bool hasColors = false;
    bool hasOcclusion = false;
    bool hasBrep = false;
    auto operator<=>(const MeshMake&) const = default;
};

MeshMake makeOf(const osg::Mesh& mesh);

/// `meshes`, all of one make and without primitives, one after the other in one mesh. Triangles without faces count as
/// one face, unless none of the meshes has faces. Nothing when there are more vertices or triangles than 32 bits can
/// count.
std::optional<osg::Mesh> joined(std::span<const std::shared_ptr<const osg::Mesh>> meshes);

} // namespace geometry
