#include "geometry/MeshJoining.h"

#include "scene/BrepPack.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace geometry
{

namespace
{

using Meshes = std::span<const std::shared_ptr<const osg::Mesh>>;

/// Room for as many values as the meshes have in `values`.
template <class T>
std::vector<T> roomFor(Meshes meshes, osg::Buffer<T> osg::Mesh::*values)
{
    std::size_t size = 0;
    for (const auto& mesh : meshes)
        size += ((*mesh).*values).size();
    std::vector<T> room;
    room.reserve(size);
    return room;
}

/// An array that holds nothing owns nothing, either: most meshes have few of their arrays.
template <class T>
osg::Buffer<T> filled(std::vector<T> values)
{
    return values.empty() ? osg::Buffer<T>() : osg::Buffer<T>(std::move(values));
}

template <class T>
osg::Buffer<T> joinedValues(Meshes meshes, osg::Buffer<T> osg::Mesh::*values)
{
    std::vector<T> all = roomFor(meshes, values);
    for (const auto& mesh : meshes)
        all.insert(all.end(), ((*mesh).*values).begin(), ((*mesh).*values).end());
    return filled(std::move(all));
}

osg::Buffer<std::uint32_t> joinedIndices(Meshes meshes, osg::Buffer<std::uint32_t> osg::Mesh::*indices)
{
    std::vector<std::uint32_t> all = roomFor(meshes, indices);
    std::uint32_t base = 0;
    for (const auto& mesh : meshes) {
        for (const std::uint32_t index : (*mesh).*indices)
            all.push_back(base + index);
        base += static_cast<std::uint32_t>(mesh->positions.size());
    }
    return filled(std::move(all));
}

osg::Buffer<osg::FaceRange> joinedFaces(Meshes meshes)
{
    if (std::all_of(meshes.begin(), meshes.end(), [](const auto& mesh) { return mesh->faces.empty(); }))
        return {};
    std::vector<osg::FaceRange> all;
    std::uint32_t base = 0;
    for (const auto& mesh : meshes) {
        const auto count = static_cast<std::uint32_t>(mesh->triangles.size() / 3);
        for (const osg::FaceRange& face : mesh->faces)
            all.push_back({base + face.first, face.count});
        if (mesh->faces.empty() && count > 0)
            all.push_back({base, count});
        base += count;
    }
    return all;
}

osg::Buffer<std::byte> joinedBreps(Meshes meshes)
{
    std::vector<osg::Buffer<std::byte>> all;
    for (const auto& mesh : meshes)
        all.push_back(mesh->brep);
    return osg::packBreps(all);
}

bool fits(Meshes meshes)
{
    std::uint64_t vertices = 0, triangles = 0;
    for (const auto& mesh : meshes) {
        vertices += mesh->positions.size();
        triangles += mesh->triangles.size() / 3;
    }
    return std::max(vertices, triangles) < std::numeric_limits<std::uint32_t>::max();
}

} // namespace

MeshMake makeOf(const osg::Mesh& mesh)
{
    return {!mesh.normals.empty(), !mesh.texCoords.empty(), !mesh.texCoords1.empty(),
            !mesh.colors.empty(),  !mesh.occlusion.empty(), !mesh.brep.empty()};
}

std::optional<osg::Mesh> joined(Meshes meshes)
{
    if (!fits(meshes))
        return std::nullopt;
    osg::Mesh result;
    result.positions = joinedValues(meshes, &osg::Mesh::positions);
    result.normals = joinedValues(meshes, &osg::Mesh::normals);
    result.texCoords = joinedValues(meshes, &osg::Mesh::texCoords);
    result.texCoords1 = joinedValues(meshes, &osg::Mesh::texCoords1);
    result.colors = joinedValues(meshes, &osg::Mesh::colors);
    result.occlusion = joinedValues(meshes, &osg::Mesh::occlusion);
    result.triangles = joinedIndices(meshes, &osg::Mesh::triangles);
    result.lines = joinedIndices(meshes, &osg::Mesh::lines);
    result.points = joinedIndices(meshes, &osg::Mesh::points);
    result.faces = joinedFaces(meshes);
    if (!meshes.empty() && !meshes.front()->brep.empty())
        result.brep = joinedBreps(meshes);
    return result;
}

} // namespace geometry
