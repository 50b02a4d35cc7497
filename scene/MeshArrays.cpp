#include "scene/MeshArrays.h"

#include <utility>

namespace osg
{

Mesh meshOf(MeshArrays&& arrays)
{
    const std::size_t vertices = arrays.positions.size();
    Mesh mesh;
    if (arrays.normals.size() == vertices)
        mesh.normals = std::move(arrays.normals);
    if (arrays.texCoords.size() == vertices)
        mesh.texCoords = std::move(arrays.texCoords);
    if (arrays.colors.size() == vertices)
        mesh.colors = std::move(arrays.colors);
    mesh.positions = std::move(arrays.positions);
    mesh.triangles = std::move(arrays.triangles);
    mesh.lines = std::move(arrays.lines);
    mesh.points = std::move(arrays.points);
    mesh.faces = std::move(arrays.faces);
    return mesh;
}

} // namespace osg
