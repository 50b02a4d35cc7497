#pragma once

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Math.h"
#include "scene/Buffer.h"

#include <cstddef>
#include <cstdint>

namespace osg
{

/// The triangles of one face of the model: `count` triangles from the triangle `first` on.
struct FaceRange {
    std::uint32_t first = 0; ///< the place of the first triangle, from 0
    std::uint32_t count = 0; ///< how many triangles
    /// The same range.
    friend bool operator==(const FaceRange&, const FaceRange&) = default;
};

/// An area that is no triangle yet: `count` indices of `Mesh::corners` from `first` on.
struct Primitive {
    /// How its corners make an area.
    enum class Kind : std::uint32_t {
        Polygon, ///< its outline in one plane, without holes; it need not be convex
        Strip,   ///< each corner from the third on makes a triangle with the two before it
        Fan,     ///< each corner from the third on makes a triangle with the first one and the one before it
    };
    Kind kind = Kind::Polygon; ///< how the corners make an area
    std::uint32_t first = 0;   ///< the place of the first index in the corners, from 0
    std::uint32_t count = 0;   ///< how many indices
    /// The same kind and range.
    friend bool operator==(const Primitive&, const Primitive&) = default;
};

/// What a geometry draws. `normals`, `texCoords`, `texCoords1`, `colors` and `occlusion` are empty or as long as
/// `positions`; indices count positions. Lengths are millimetres, front faces are counter-clockwise.
struct Mesh {
    Buffer<Vec3f> positions;         ///< one for each vertex
    Buffer<Vec3f> normals;           ///< directions, not necessarily of length 1
    Buffer<Vec2f> texCoords;         ///< (0, 0) is the lower left corner of the picture
    Buffer<Vec2f> texCoords1;        ///< the second set, for textures that ask for it
    Buffer<Color4f> colors;          ///< display colours
    Buffer<std::uint32_t> triangles; ///< three a triangle
    Buffer<std::uint32_t> lines;     ///< two a segment
    Buffer<std::uint32_t> points;    ///< one a point
    Buffer<FaceRange> faces;         ///< empty, or ranges that cover all triangles in order
    Buffer<std::byte> brep;  ///< the exact surface that the mesh was made from, for a later mesh of it; may be empty
    Buffer<float> occlusion; ///< the part of the sky over its surface that each vertex sees, 0 to 1
    /// Areas that nothing draws or stores before `znOptimize::triangulate` has made triangles of them.
    Buffer<Primitive> primitives;
    Buffer<std::uint32_t> corners; ///< of the primitives
    /// Equal array by array.
    friend bool operator==(const Mesh&, const Mesh&) = default;
};

/// The one way to the mesh of a geometry.
struct GeometryAccess {
    /// Never fails: a geometry without a mesh gives an empty one.
    static const Mesh& mesh(const GeometryBase& geometry);
    /// The mesh as it is shared; null for a geometry without one.
    static std::shared_ptr<const Mesh> sharedMesh(const GeometryBase& geometry);
    /// To be called within an edit of `GeometryBase::MeshFieldMask`.
    static void setMesh(GeometryBase& geometry, std::shared_ptr<const Mesh> mesh);
};

} // namespace osg
