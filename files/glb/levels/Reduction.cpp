#include "files/glb/levels/Reduction.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <cstring>

namespace files::glb::levels
{

namespace
{

using packing::Json;
using packing::PackedFile;

/// Vertices by places of their own, in the order of their numbers.
struct Places {
    std::vector<std::uint32_t> vertices;
    Triangles triangles;
};

Places placesOf(const Triangles& indices)
{
    Places places = {indices, indices};
    std::sort(places.vertices.begin(), places.vertices.end());
    places.vertices.erase(std::unique(places.vertices.begin(), places.vertices.end()), places.vertices.end());
    for (std::uint32_t& corner : places.triangles)
        corner = static_cast<std::uint32_t>(std::lower_bound(places.vertices.begin(), places.vertices.end(), corner) -
                                            places.vertices.begin());
    return places;
}

/// What the accessor says of `vertices`, one after the other.
std::vector<float> attributeOf(const PackedFile& file, const Json& accessor, const std::vector<std::uint32_t>& vertices)
{
    const std::size_t width = packing::componentsOf(accessor);
    const std::byte* from = packing::elementsOf(file, accessor);
    std::vector<float> values(vertices.size() * width);
    for (std::size_t i = 0; i < vertices.size(); ++i)
        std::memcpy(&values[i * width], from + vertices[i] * width * sizeof(float), width * sizeof(float));
    for (float& value : values)
        value += 0.0f; // no -0, which differs in its bytes
    return values;
}

/// Of each vertex the first one that is equal to it.
std::vector<std::uint32_t> firstOfEqual(const PackedFile& file, const Json& attributes, const Places& places)
{
    std::vector<std::vector<float>> values;
    std::vector<meshopt_Stream> streams;
    for (const Json& accessor : attributes) {
        const Json& told = file.accessors[accessor.get<std::size_t>()];
        const std::size_t size = packing::componentsOf(told) * sizeof(float);
        values.push_back(attributeOf(file, told, places.vertices));
        streams.push_back({values.back().data(), size, size});
    }
    const std::size_t count = places.vertices.size();
    std::vector<std::uint32_t> classes(count);
    meshopt_generateVertexRemapMulti(classes.data(), places.triangles.data(), places.triangles.size(), count,
                                     streams.data(), streams.size());
    std::vector<std::uint32_t> first(count, ~0u);
    for (std::uint32_t i = 0; i < count; ++i)
        first[classes[i]] = std::min(first[classes[i]], i);
    for (std::uint32_t& entry : classes)
        entry = first[entry];
    return classes;
}

} // namespace

Triangles Surface::inFile(const Triangles& local) const
{
    Triangles result = local;
    for (std::uint32_t& corner : result)
        corner = vertices[corner];
    return result;
}

Surface surfaceOf(const PackedFile& file, const Json& primitive)
{
    const Json& attributes = primitive.at("attributes");
    const Places all = placesOf(packing::indicesOf(file, file.accessors[primitive.at("indices").get<std::size_t>()]));
    const std::vector<std::uint32_t> first = firstOfEqual(file, attributes, all);
    Triangles triangles;
    for (std::size_t i = 0; i + 2 < all.triangles.size(); i += 3) {
        const std::uint32_t a = first[all.triangles[i]], b = first[all.triangles[i + 1]],
                            c = first[all.triangles[i + 2]];
        if (a != b && b != c && c != a)
            triangles.insert(triangles.end(), {a, b, c});
    }
    Places welded = placesOf(triangles);
    for (std::uint32_t& vertex : welded.vertices)
        vertex = all.vertices[vertex];
    const Json& positions = file.accessors[attributes.at("POSITION").get<std::size_t>()];
    const std::vector<float> values = attributeOf(file, positions, welded.vertices);
    Surface surface = {{}, std::move(welded.vertices), std::move(welded.triangles)};
    for (std::size_t i = 0; i < values.size(); i += 3)
        surface.positions.emplace_back(values[i], values[i + 1], values[i + 2]);
    return surface;
}

double sizeOf(const Surface& surface)
{
    return surface.positions.empty() ? 0
                                     : double(meshopt_simplifyScale(surface.positions.front().data(),
                                                                    surface.positions.size(), sizeof(Eigen::Vector3f)));
}

Triangles reduced(const Surface& surface, const Triangles& triangles, std::size_t most, double error)
{
    if (triangles.empty())
        return {};
    const float* positions = surface.positions.front().data();
    const std::size_t count = surface.positions.size(), stride = sizeof(Eigen::Vector3f);
    const double size = sizeOf(surface);
    Triangles result(triangles.size());
    result.resize(meshopt_simplify(result.data(), triangles.data(), triangles.size(), positions, count, stride,
                                   most * 3, size > 0 ? static_cast<float>(error / size) : 0,
                                   meshopt_SimplifyLockBorder, nullptr));
    return result;
}

} // namespace files::glb::levels
