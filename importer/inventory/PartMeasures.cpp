#include "importer/inventory/PartMeasures.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace importer::inventory
{

namespace
{

using Point = std::array<double, 3>;

Point operator-(const Point& a, const Point& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Point cross(const Point& a, const Point& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dot(const Point& a, const Point& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Point placed(const osg::Matrix& m, const osg::Vec3f& v)
{
    Point point;
    for (unsigned row = 0; row < 3; ++row)
        point[row] = double(m[row]) * v.x + double(m[4 + row]) * v.y + double(m[8 + row]) * v.z + m[12 + row];
    return point;
}

/// Corners by their place, rounded to the floats that meshes are made of.
class Corners
{
public:
    std::uint32_t numberOf(const Point& point)
    {
        std::array<std::uint32_t, 3> key;
        for (unsigned i = 0; i < 3; ++i)
            key[i] = std::bit_cast<std::uint32_t>(static_cast<float>(point[i]) + 0.0f);
        return m_numbers.try_emplace(key, static_cast<std::uint32_t>(m_numbers.size())).first->second;
    }

private:
    struct Hash {
        std::size_t operator()(const std::array<std::uint32_t, 3>& key) const
        {
            std::uint64_t hash = 0;
            for (const std::uint32_t part : key)
                hash = (hash ^ part) * 0x9E3779B97F4A7C15u;
            return hash ^ hash >> 29;
        }
    };
    std::unordered_map<std::array<std::uint32_t, 3>, std::uint32_t, Hash> m_numbers;
};

class Measuring
{
public:
    void add(const PlacedMesh& placedMesh)
    {
        std::vector<Point> points;
        std::vector<std::uint32_t> numbers;
        for (const osg::Vec3f& position : placedMesh.mesh->positions) {
            points.push_back(placed(placedMesh.matrix, position));
            numbers.push_back(m_corners.numberOf(points.back()));
        }
        if (!m_origin && !points.empty())
            m_origin = points.front();
        const osg::Buffer<std::uint32_t>& triangles = placedMesh.mesh->triangles;
        for (std::size_t i = 0; i + 3 <= triangles.size(); i += 3) {
            addTriangle(points[triangles[i]], points[triangles[i + 1]], points[triangles[i + 2]]);
            for (unsigned k = 0; k < 3; ++k)
                addEdge(numbers[triangles[i + k]], numbers[triangles[i + (k + 1) % 3]]);
        }
    }

    MeshMeasures result() const
    {
        const bool isClosed = m_area > 0 && m_openEdges == 0;
        return {m_area, isClosed ? std::optional(std::abs(m_volume)) : std::nullopt};
    }

private:
    /// Measured from a corner of the part: far from the zero point digits would be lost.
    void addTriangle(const Point& a, const Point& b, const Point& c)
    {
        const Point normal = cross(b - a, c - a);
        m_area += std::sqrt(dot(normal, normal)) / 2;
        m_volume += dot(a - *m_origin, normal) / 6;
    }

    void addEdge(std::uint32_t from, std::uint32_t to)
    {
        if (from == to)
            return;
        const auto key = std::uint64_t(std::min(from, to)) << 32 | std::max(from, to);
        int& passes = m_edges[key];
        m_openEdges -= passes != 0;
        passes += from < to ? 1 : -1;
        m_openEdges += passes != 0;
    }

    Corners m_corners;
    std::unordered_map<std::uint64_t, int> m_edges;
    std::int64_t m_openEdges = 0;
    std::optional<Point> m_origin;
    double m_area = 0;
    double m_volume = 0;
};

} // namespace

MeshMeasures measure(const std::vector<PlacedMesh>& meshes)
{
    Measuring measuring;
    for (const PlacedMesh& mesh : meshes)
        measuring.add(mesh);
    return measuring.result();
}

} // namespace importer::inventory
