#pragma once

#include "files/glb/levels/Reduction.h"
#include "scene/Mesh.h"

#include <cmath>
#include <cstring>
#include <map>
#include <numbers>
#include <vector>

/// Meshes whose simplified forms are known.
namespace levelshapes
{

using files::glb::levels::Triangles;

/// A flat square of `size` with side x side cells, upright at z.
inline osg::Mesh plane(unsigned side, float size, float z = 0)
{
    std::vector<osg::Vec3f> positions;
    Triangles triangles;
    for (unsigned row = 0; row <= side; ++row)
        for (unsigned column = 0; column <= side; ++column)
            positions.push_back({size * float(column) / float(side), size * float(row) / float(side), z});
    for (std::uint32_t row = 0; row < side; ++row)
        for (std::uint32_t column = 0; column < side; ++column) {
            const std::uint32_t a = row * (side + 1) + column, b = a + side + 1;
            triangles.insert(triangles.end(), {a, a + 1, b + 1, a, b + 1, b});
        }
    osg::Mesh mesh;
    mesh.positions = positions;
    mesh.triangles = triangles;
    return mesh;
}

/// A closed ball with `rings` times 2 x `rings` quads.
inline osg::Mesh ball(unsigned rings, float radius)
{
    std::vector<osg::Vec3f> positions = {{0, 0, radius}};
    Triangles triangles;
    const unsigned around = 2 * rings;
    for (unsigned ring = 1; ring < rings; ++ring)
        for (unsigned i = 0; i < around; ++i) {
            const double up = std::numbers::pi * ring / rings, turn = 2 * std::numbers::pi * i / around;
            positions.push_back({float(radius * std::sin(up) * std::cos(turn)),
                                 float(radius * std::sin(up) * std::sin(turn)), float(radius * std::cos(up))});
        }
    positions.push_back({0, 0, -radius});
    const auto at = [&](unsigned ring, unsigned i) {
        return ring == 0 ? 0u : ring == rings ? (rings - 1) * around + 1 : 1 + (ring - 1) * around + i % around;
    };
    for (unsigned ring = 0; ring < rings; ++ring)
        for (unsigned i = 0; i < around; ++i) {
            if (ring > 0)
                triangles.insert(triangles.end(), {at(ring, i), at(ring + 1, i), at(ring, i + 1)});
            if (ring + 1 < rings)
                triangles.insert(triangles.end(), {at(ring, i + 1), at(ring + 1, i), at(ring + 1, i + 1)});
        }
    osg::Mesh mesh;
    mesh.positions = positions;
    mesh.triangles = triangles;
    return mesh;
}

/// A tube with lids: `around` flat-lit rims, so that vertices at the rims are double.
inline osg::Mesh drum(unsigned around, unsigned rows, float radius, float height)
{
    std::vector<osg::Vec3f> positions, normals;
    Triangles triangles;
    for (unsigned row = 0; row <= rows; ++row)
        for (unsigned i = 0; i < around; ++i) {
            const double turn = 2 * std::numbers::pi * i / around;
            normals.push_back({float(std::cos(turn)), float(std::sin(turn)), 0});
            positions.push_back(
                {radius * normals.back().x, radius * normals.back().y, height * float(row) / float(rows)});
        }
    for (unsigned row = 0; row < rows; ++row)
        for (unsigned i = 0; i < around; ++i) {
            const unsigned a = row * around + i, b = row * around + (i + 1) % around;
            triangles.insert(triangles.end(), {a, b, b + around, a, b + around, a + around});
        }
    for (const bool isTop : {false, true}) {
        const auto first = static_cast<std::uint32_t>(positions.size());
        const float z = isTop ? height : 0;
        for (unsigned i = 0; i < around; ++i) {
            const double turn = 2 * std::numbers::pi * i / around;
            positions.push_back({radius * float(std::cos(turn)), radius * float(std::sin(turn)), z});
        }
        positions.push_back({0, 0, z});
        normals.resize(positions.size(), {0, 0, isTop ? 1.0f : -1.0f});
        for (unsigned i = 0; i < around; ++i) {
            const unsigned a = first + i, b = first + (i + 1) % around, c = first + around;
            triangles.insert(triangles.end(), {isTop ? a : b, isTop ? b : a, c});
        }
    }
    osg::Mesh mesh;
    mesh.positions = positions;
    mesh.normals = normals;
    mesh.triangles = triangles;
    return mesh;
}

/// The mesh as the one primitive of a file.
inline files::glb::packing::PackedFile fileOf(const osg::Mesh& mesh)
{
    using files::glb::packing::Json;
    files::glb::packing::PackedFile file;
    file.meshes = Json::parse(R"([{"primitives": [{"attributes": {"POSITION": 0}, "indices": 1}]}])");
    file.accessors = Json::array();
    file.bufferViews = Json::array();
    const auto add = [&](const void* data, std::size_t size, Json accessor) {
        const std::size_t start = file.binary.size();
        file.binary.resize(start + size);
        std::memcpy(file.binary.data() + start, data, size);
        accessor["bufferView"] = file.bufferViews.size();
        file.bufferViews.push_back({{"buffer", 0}, {"byteOffset", start}, {"byteLength", size}});
        file.accessors.push_back(std::move(accessor));
    };
    add(mesh.positions.data(), mesh.positions.size() * sizeof(osg::Vec3f),
        {{"componentType", 5126}, {"type", "VEC3"}, {"count", mesh.positions.size()}});
    add(mesh.triangles.data(), mesh.triangles.size() * sizeof(std::uint32_t),
        {{"componentType", 5125}, {"type", "SCALAR"}, {"count", mesh.triangles.size()}});
    if (!mesh.normals.empty()) {
        file.meshes[0]["primitives"][0]["attributes"]["NORMAL"] = 2;
        add(mesh.normals.data(), mesh.normals.size() * sizeof(osg::Vec3f),
            {{"componentType", 5126}, {"type", "VEC3"}, {"count", mesh.normals.size()}});
    }
    return file;
}

inline files::glb::levels::Surface surfaceOf(const osg::Mesh& mesh)
{
    const files::glb::packing::PackedFile file = fileOf(mesh);
    return files::glb::levels::surfaceOf(file, file.meshes[0]["primitives"][0]);
}

/// The edges, by the places of their ends, that an odd number of triangles have: none of a closed surface.
inline std::vector<std::array<std::array<float, 3>, 2>> openEdges(const std::vector<Eigen::Vector3f>& positions,
                                                                  const Triangles& triangles)
{
    std::map<std::array<std::array<float, 3>, 2>, int> counts;
    const auto place = [&](std::uint32_t corner) {
        const Eigen::Vector3f& p = positions[corner];
        return std::array<float, 3>{p.x(), p.y(), p.z()};
    };
    for (std::size_t i = 0; i < triangles.size(); i += 3)
        for (std::size_t side = 0; side < 3; ++side) {
            const auto a = place(triangles[i + side]), b = place(triangles[i + (side + 1) % 3]);
            ++counts[{std::min(a, b), std::max(a, b)}];
        }
    std::vector<std::array<std::array<float, 3>, 2>> open;
    for (const auto& [edge, count] : counts)
        if (count % 2 != 0)
            open.push_back(edge);
    return open;
}

} // namespace levelshapes
