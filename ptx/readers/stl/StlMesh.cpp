#include "ptx/readers/stl/StlMesh.h"

#include "ptx/model/MeshBuilder.h"

#include <bit>
#include <cmath>
#include <unordered_map>

namespace ptx::stl
{

namespace
{

using Vertex = std::array<float, 6>;

struct VertexHash {
    std::size_t operator()(const Vertex& vertex) const
    {
        std::size_t hash = 0;
        for (const float value : vertex)
            hash = (hash ^ std::bit_cast<std::uint32_t>(value)) * 0x9E3779B97F4A7C15u;
        return hash ^ hash >> 29;
    }
};

osg::Vec3f scaled(const osg::Vec3f& v, float factor)
{
    return {v.x * factor, v.y * factor, v.z * factor};
}

// In double: the sides of a small triangle far from the origin are short.
osg::Vec3f normalOf(const Facet& facet)
{
    const auto& [a, b, c] = facet.corners;
    const double ux = double(b.x) - a.x, uy = double(b.y) - a.y, uz = double(b.z) - a.z;
    const double vx = double(c.x) - a.x, vy = double(c.y) - a.y, vz = double(c.z) - a.z;
    const double x = uy * vz - uz * vy, y = uz * vx - ux * vz, z = ux * vy - uy * vx;
    const double length = std::sqrt(x * x + y * y + z * z);
    if (length > 0 && std::isfinite(length))
        return {static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length)};
    return facet.normal;
}

// 0 and -0 are one place.
Vertex vertexOf(const osg::Vec3f& p, const osg::Vec3f& n)
{
    Vertex vertex = {p.x, p.y, p.z, n.x, n.y, n.z};
    for (float& value : vertex)
        value += 0.0f;
    return vertex;
}

} // namespace

std::shared_ptr<const osg::Mesh> meshOf(const Solid& solid, float unit)
{
    model::MeshBuilder builder;
    std::unordered_map<Vertex, std::uint32_t, VertexHash> known;
    for (const Facet& facet : solid.facets) {
        const osg::Vec3f normal = normalOf(facet);
        std::array<std::uint32_t, 3> numbers{};
        for (std::size_t i = 0; i < 3; ++i) {
            const osg::Vec3f place = scaled(facet.corners[i], unit);
            const auto [entry, isNew] = known.try_emplace(vertexOf(place, normal), 0);
            if (isNew)
                entry->second = builder.addVertex(place, normal);
            numbers[i] = entry->second;
        }
        builder.addTriangle(numbers[0], numbers[1], numbers[2]);
    }
    return builder.take();
}

} // namespace ptx::stl
