#pragma once

#include "standalone/OSGSystem/Mesh.h"

#include <vector>

namespace formats
{

/// A mesh under construction.
struct MeshArrays {
    std::vector<osg::Vec3f> positions;
    std::vector<osg::Vec3f> normals;
    std::vector<osg::Vec2f> texCoords;
    std::vector<osg::Color4f> colors;
    std::vector<std::uint32_t> triangles;
    std::vector<std::uint32_t> lines;
    std::vector<std::uint32_t> points;
};

/// The mesh of `arrays` with vertices that are equal in all they carry, bit by bit, made one. Vertices keep the order
/// of their first appearance.
osg::Mesh weldedMesh(MeshArrays arrays);

} // namespace formats
