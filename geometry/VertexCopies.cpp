#include "geometry/VertexCopies.h"

namespace geometry
{

namespace
{

template <class T>
void append(osg::Buffer<T>& values, const std::vector<std::uint32_t>& copies)
{
    if (values.empty() || copies.empty())
        return;
    std::vector<T> all;
    all.reserve(values.size() + copies.size());
    all.assign(values.begin(), values.end());
    for (const std::uint32_t index : copies)
        all.push_back(values[index]);
    values = std::move(all);
}

} // namespace

void appendVertexCopies(osg::Mesh& mesh, const std::vector<std::uint32_t>& vertices)
{
    append(mesh.positions, vertices);
    append(mesh.normals, vertices);
    append(mesh.texCoords, vertices);
    append(mesh.texCoords1, vertices);
    append(mesh.colors, vertices);
    append(mesh.occlusion, vertices);
}

} // namespace geometry
