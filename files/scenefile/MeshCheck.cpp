#include "files/scenefile/MeshCheck.h"

#include "files/scenefile/SceneErrors.h"

#include <algorithm>

namespace osg::scenefile
{

namespace
{

/// Written so that compilers turn it into vector instructions: it reads all indices of a file when it is opened.
std::uint64_t largestOf(const Buffer<std::uint32_t>& indices)
{
    std::uint32_t largest = 0;
    for (const std::uint32_t index : indices)
        largest = std::max(largest, index);
    return largest;
}

/// How many triangles the ranges cover from the first one on; more than a mesh can have when they leave gaps.
std::uint64_t coveredBy(const Buffer<FaceRange>& faces)
{
    std::uint64_t next = 0;
    for (const FaceRange& face : faces) {
        if (face.first != next)
            return ~std::uint64_t(0);
        next += face.count;
    }
    return next;
}

template <class T>
bool fits(const Buffer<T>& values, const Buffer<Vec3f>& positions)
{
    return values.empty() || values.size() == positions.size();
}

} // namespace

template <class T, class Scan>
std::optional<std::uint64_t> MeshCheck::scanned(const Buffer<T>& array, const Scan& scan)
{
    const Range range(array.data(), array.size(), sizeof(T));
    const auto known = m_results.find(range);
    if (known != m_results.end())
        return known->second;
    const std::uint64_t bytes = array.size() * sizeof(T);
    if (bytes > m_budget)
        return std::nullopt;
    m_budget -= bytes;
    return m_results[range] = scan(array);
}

std::optional<QString> MeshCheck::defect(const Mesh& mesh)
{
    if (!fits(mesh.normals, mesh.positions) || !fits(mesh.texCoords, mesh.positions) ||
        !fits(mesh.texCoords1, mesh.positions) || !fits(mesh.colors, mesh.positions) ||
        !fits(mesh.occlusion, mesh.positions))
        return Text::tr("The arrays of a mesh have different lengths");
    const std::size_t vertices = mesh.positions.size();
    if (auto defect = indexDefect(mesh.triangles, 3, vertices))
        return defect;
    if (auto defect = indexDefect(mesh.lines, 2, vertices))
        return defect;
    if (auto defect = indexDefect(mesh.points, 1, vertices))
        return defect;
    return faceDefect(mesh.faces, mesh.triangles.size() / 3);
}

std::optional<QString> MeshCheck::indexDefect(const Buffer<std::uint32_t>& indices, std::size_t perElement,
                                              std::size_t vertices)
{
    if (indices.empty())
        return std::nullopt;
    if (indices.size() % perElement != 0)
        return Text::tr("A mesh has an incomplete triangle or line");
    const auto largest = scanned(indices, largestOf);
    if (!largest)
        return Text::tr("Arrays of meshes overlap");
    if (*largest >= vertices)
        return Text::tr("A mesh has the index %1 and only %2 vertices").arg(*largest).arg(vertices);
    return std::nullopt;
}

std::optional<QString> MeshCheck::faceDefect(const Buffer<FaceRange>& faces, std::size_t triangles)
{
    if (faces.empty())
        return std::nullopt;
    const auto covered = scanned(faces, coveredBy);
    if (!covered)
        return Text::tr("Arrays of meshes overlap");
    if (*covered != triangles)
        return Text::tr("The faces of a mesh do not cover its triangles in order");
    return std::nullopt;
}

} // namespace osg::scenefile
