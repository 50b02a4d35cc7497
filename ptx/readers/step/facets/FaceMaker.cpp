#include "ptx/readers/step/facets/FaceMaker.h"

#include <cmath>

namespace ptx::step::facets
{

namespace
{

// Files hold rubbish now and then.
bool isUnit(const Point& normal)
{
    constexpr double Tolerance = 1e-3;
    return std::abs(std::hypot(normal[0], normal[1], normal[2]) - 1) < Tolerance;
}

class FaceMaker
{
public:
    FaceMaker(const Surface& surface, const std::vector<Point>& points, const Places& places, bool withNormals)
        : m_surface(surface), m_points(points), m_places(places), m_normals(surface.normals())
    {
        m_hasOne = m_normals.size() == 1;
        m_hasNormals =
            withNormals && (m_hasOne || (m_normals.size() > 0 && m_normals.size() == surface.entries(points.size())));
    }

    void add(const Surface::Corners& corners, FaceCounts& counts)
    {
        std::array<std::size_t, 3> three{};
        for (std::size_t i = 0; i < 3; ++i)
            three[i] = m_surface.pointOf(corners[i]);
        for (const std::size_t point : three)
            if (point == 0 || point > m_points.size()) {
                ++counts.outOfRange;
                return;
            }
        if (three[0] == three[1] || three[1] == three[2] || three[2] == three[0]) {
            ++counts.joints;
            return;
        }
        for (std::size_t i = 0; i < 3; ++i)
            m_mesh.triangles.push_back(vertex(corners[i], three[i]));
    }

    FaceMesh take() { return std::move(m_mesh); }

private:
    // Entries differ in their normals.
    std::uint32_t vertex(std::size_t entry, std::size_t point)
    {
        const auto [known, isNew] =
            m_numbers.try_emplace(m_hasNormals ? entry : point, static_cast<std::uint32_t>(m_mesh.points.size()));
        if (isNew) {
            m_mesh.points.push_back(placed(m_points[point - 1], m_places));
            if (m_hasNormals)
                m_mesh.normals.push_back(normalOf(m_hasOne ? 1 : entry));
        }
        return known->second;
    }

    Point normalOf(std::size_t number) const
    {
        const p21::Fields row = m_normals.list(number - 1);
        Point normal = {row.real(0).value_or(0), row.real(1).value_or(0), row.real(2).value_or(0)};
        if (!isUnit(normal))
            return {};
        for (auto axes = m_places.rbegin(); axes != m_places.rend(); ++axes)
            normal = axes->turned(normal);
        return normal;
    }

    const Surface& m_surface;
    const std::vector<Point>& m_points;
    const Places& m_places;
    p21::Fields m_normals;
    bool m_hasOne = false;
    bool m_hasNormals = false;
    std::unordered_map<std::size_t, std::uint32_t> m_numbers; ///< of vertices, by entry or point
    FaceMesh m_mesh;
};

} // namespace

Point placed(Point point, const Places& places)
{
    for (auto axes = places.rbegin(); axes != places.rend(); ++axes)
        point = axes->placed(point);
    return point;
}

FaceMesh faceMesh(const Surface& surface, const std::vector<Point>& points, const Places& places, bool withNormals,
                  const TakeTriangle& take, FaceCounts& counts)
{
    FaceMaker maker(surface, points, places, withNormals);
    surface.forEachTriangle([&](const Surface::Corners& corners) {
        if (!take())
            return false;
        maker.add(corners, counts);
        return true;
    });
    return maker.take();
}

} // namespace ptx::step::facets
