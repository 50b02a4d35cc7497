#include "geometry/MeshTriangulation.h"

#include "geometry/TriangleFilter.h"
#include "scene/Polygons.h"

#include <algorithm>
#include <span>

namespace geometry
{

namespace
{

using Corners = std::span<const std::uint32_t>;

void appendStrip(Corners corners, std::vector<std::uint32_t>& triangles)
{
    for (std::size_t i = 2; i < corners.size(); ++i) {
        const std::size_t odd = i % 2;
        triangles.insert(triangles.end(), {corners[i - 2 + odd], corners[i - 1 - odd], corners[i]});
    }
}

void appendFan(Corners corners, std::vector<std::uint32_t>& triangles)
{
    for (std::size_t i = 2; i < corners.size(); ++i)
        triangles.insert(triangles.end(), {corners[0], corners[i - 1], corners[i]});
}

void append(const osg::Mesh& mesh, osg::Primitive::Kind kind, Corners corners, std::vector<std::uint32_t>& triangles)
{
    switch (kind) {
    case osg::Primitive::Kind::Polygon:
        return osg::appendPolygon(mesh.positions.span(), corners, triangles);
    case osg::Primitive::Kind::Strip:
        return appendStrip(corners, triangles);
    case osg::Primitive::Kind::Fan:
        return appendFan(corners, triangles);
    }
}

/// The corners of `primitive`; none when it is not what it should be.
Corners cornersOf(const osg::Mesh& mesh, const osg::Primitive& primitive)
{
    if (primitive.first > mesh.corners.size() || primitive.count > mesh.corners.size() - primitive.first)
        return {};
    const Corners corners = mesh.corners.span().subspan(primitive.first, primitive.count);
    const bool known =
        std::all_of(corners.begin(), corners.end(), [&](std::uint32_t c) { return c < mesh.positions.size(); });
    return known ? corners : Corners();
}

void endFace(osg::Mesh& mesh, const std::vector<std::uint32_t>& triangles)
{
    const auto first = static_cast<std::uint32_t>(mesh.triangles.size() / 3);
    const auto count = static_cast<std::uint32_t>(triangles.size() / 3) - first;
    if (mesh.faces.empty() || count == 0)
        return;
    std::vector<osg::FaceRange> faces(mesh.faces.begin(), mesh.faces.end());
    faces.push_back({first, count});
    mesh.faces = std::move(faces);
}

bool hasArea(const osg::Vec3f& a, const osg::Vec3f& b, const osg::Vec3f& c)
{
    const double u[] = {double(b.x) - a.x, double(b.y) - a.y, double(b.z) - a.z};
    const double v[] = {double(c.x) - a.x, double(c.y) - a.y, double(c.z) - a.z};
    return u[1] * v[2] != u[2] * v[1] || u[2] * v[0] != u[0] * v[2] || u[0] * v[1] != u[1] * v[0];
}

} // namespace

Triangulated triangulated(const osg::Mesh& mesh)
{
    Triangulated result{mesh};
    std::vector<std::uint32_t> triangles(mesh.triangles.begin(), mesh.triangles.end());
    for (const osg::Primitive& primitive : mesh.primitives) {
        const Corners corners = cornersOf(mesh, primitive);
        if (corners.size() < 3)
            ++result.leftOut;
        else
            append(mesh, primitive.kind, corners, triangles);
    }
    endFace(result.mesh, triangles);
    result.mesh.triangles = std::move(triangles);
    result.mesh.primitives = {};
    result.mesh.corners = {};
    return result;
}

osg::Mesh withoutFlatTriangles(const osg::Mesh& mesh)
{
    FilteredTriangles kept = filteredTriangles(mesh, [&](const std::uint32_t* corner) {
        const osg::Vec3f* at[3] = {};
        for (std::size_t i = 0; i < 3; ++i) {
            if (corner[i] >= mesh.positions.size())
                return true;
            at[i] = &mesh.positions[corner[i]];
        }
        return hasArea(*at[0], *at[1], *at[2]);
    });
    osg::Mesh result = mesh;
    result.triangles = std::move(kept.triangles);
    result.faces = std::move(kept.faces);
    return result;
}

} // namespace geometry
