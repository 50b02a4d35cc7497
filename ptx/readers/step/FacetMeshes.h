#pragma once

#include "ptx/readers/step/facets/Parts.h"
#include "scene/Mesh.h"

#include <memory>
#include <optional>
#include <vector>

namespace ptx::step
{

/// The faces of one colour.
struct FacetPiece {
    std::optional<osg::Color4f> color;
    std::shared_ptr<const osg::Mesh> mesh;
};

/// The meshes of `part`, whose points have `millimetres` as their unit, one for each colour. A face without normals
/// gets those of its triangles, smooth where these meet at small angles. Triangles with points out of all range are
/// left out and counted in `outOfRange`.
std::vector<FacetPiece> meshesOf(const facets::Part& part, double millimetres, std::size_t& outOfRange);

} // namespace ptx::step
