#pragma once

#include "scene/Mesh.h"

#include <cstdint>
#include <vector>

namespace osg
{

/// The arrays of a mesh under construction, which still grow and change; they mean what those of `Mesh` mean.
struct MeshArrays {
    std::vector<Vec3f> positions;
    std::vector<Vec3f> normals;
    std::vector<Vec2f> texCoords;
    std::vector<Color4f> colors;
    std::vector<std::uint32_t> triangles;
    std::vector<std::uint32_t> lines;
    std::vector<std::uint32_t> points;
    std::vector<FaceRange> faces;
};

/// The mesh of `arrays`, which are taken over without a copy. What some vertices lack besides their position, none has.
Mesh meshOf(MeshArrays&& arrays);

} // namespace osg
