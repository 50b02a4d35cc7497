#include "files/gltf/GltfModes.h"

#include <tiny_gltf.h>

namespace files::gltf
{

namespace
{

using Indices = osg::Buffer<std::uint32_t>;

Indices wholeElements(const Indices& indices, std::size_t corners)
{
    if (indices.size() % corners == 0)
        return indices;
    const std::size_t count = indices.size() - indices.size() % corners;
    return std::vector<std::uint32_t>(indices.begin(), indices.begin() + count);
}

Indices lineStrip(const Indices& indices, bool isClosed)
{
    std::vector<std::uint32_t> lines;
    for (std::size_t i = 0; i + 1 < indices.size(); ++i)
        lines.insert(lines.end(), {indices[i], indices[i + 1]});
    if (isClosed && indices.size() > 1)
        lines.insert(lines.end(), {indices[indices.size() - 1], indices[0]});
    return lines;
}

Indices triangleStrip(const Indices& indices)
{
    std::vector<std::uint32_t> triangles;
    for (std::size_t i = 0; i + 2 < indices.size(); ++i)
        triangles.insert(triangles.end(), {indices[i], indices[i + 1 + i % 2], indices[i + 2 - i % 2]});
    return triangles;
}

Indices triangleFan(const Indices& indices)
{
    std::vector<std::uint32_t> triangles;
    for (std::size_t i = 1; i + 1 < indices.size(); ++i)
        triangles.insert(triangles.end(), {indices[i], indices[i + 1], indices[0]});
    return triangles;
}

} // namespace

std::size_t gltfCorners(int mode)
{
    switch (mode) {
    case TINYGLTF_MODE_POINTS:
        return 1;
    case TINYGLTF_MODE_LINE:
    case TINYGLTF_MODE_LINE_LOOP:
    case TINYGLTF_MODE_LINE_STRIP:
        return 2;
    case TINYGLTF_MODE_TRIANGLES:
    case TINYGLTF_MODE_TRIANGLE_STRIP:
    case TINYGLTF_MODE_TRIANGLE_FAN:
        return 3;
    default:
        return 0;
    }
}

Indices gltfElements(int mode, const Indices& indices)
{
    switch (mode) {
    case TINYGLTF_MODE_LINE_LOOP:
        return lineStrip(indices, true);
    case TINYGLTF_MODE_LINE_STRIP:
        return lineStrip(indices, false);
    case TINYGLTF_MODE_TRIANGLE_STRIP:
        return triangleStrip(indices);
    case TINYGLTF_MODE_TRIANGLE_FAN:
        return triangleFan(indices);
    default:
        return wholeElements(indices, gltfCorners(mode));
    }
}

} // namespace files::gltf
