#include "geometry/BoxCoordinates.h"

#include "geometry/VertexCopies.h"
#include "scene/EigenValues.h"

#include <Eigen/Geometry>

#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

namespace geometry
{

namespace
{

constexpr float metre = 1000;
/// Axes are equally near to a normal whose components along them differ by less than this part.
constexpr double tie = 1e-4;

/// A coordinate of a place, or its opposite.
struct Component {
    Eigen::Index axis;
    float sign;
};

/// What is u and what is v on a side of the box.
struct Side {
    Component u, v;
};

/// +X, -X, +Y, -Y, +Z, -Z.
constexpr std::array<Side, 6> sides = {
    {{{1, 1}, {2, 1}}, {{1, -1}, {2, 1}}, {{0, -1}, {2, 1}}, {{0, 1}, {2, 1}}, {{0, 1}, {1, 1}}, {{0, 1}, {1, -1}}}};
constexpr std::uint8_t top = 4;
constexpr std::uint8_t noSide = sides.size();

float along(const Component& component, const osg::Vec3f& place)
{
    const float value = component.sign * osg::toEigen(place)[component.axis] / metre;
    return std::isfinite(value) ? value : 0;
}

/// The side that a triangle faces; nothing for one without area.
std::optional<std::uint8_t> sideOf(const osg::Mesh& mesh, const std::uint32_t* corners)
{
    const Eigen::Vector3d a = osg::toEigen(mesh.positions[corners[0]]).cast<double>();
    const Eigen::Vector3d b = osg::toEigen(mesh.positions[corners[1]]).cast<double>();
    const Eigen::Vector3d c = osg::toEigen(mesh.positions[corners[2]]).cast<double>();
    const Eigen::Vector3d normal = (b - a).cross(c - a);
    const double largest = normal.cwiseAbs().maxCoeff();
    if (!(largest > 0) || !normal.allFinite())
        return std::nullopt;
    std::uint8_t axis = 0;
    while (std::abs(normal[axis]) < (1 - tie) * largest)
        ++axis;
    return static_cast<std::uint8_t>(2 * axis + (normal[axis] < 0 ? 1 : 0));
}

/// The vertices of a mesh as triangles of the six sides take them.
class SidedVertices
{
public:
    explicit SidedVertices(std::size_t count) : m_count(count), m_sides(count, noSide), m_next(count, 0) {}

    /// The vertex that is `vertex` on this side.
    std::uint32_t taken(std::uint32_t vertex, std::uint8_t side)
    {
        while (m_sides[vertex] != noSide && m_sides[vertex] != side) {
            if (m_next[vertex] == 0)
                m_next[vertex] = doubled(vertex);
            vertex = m_next[vertex];
        }
        m_sides[vertex] = side;
        return vertex;
    }

    /// Of which vertices there are copies, in their order behind the others.
    const std::vector<std::uint32_t>& copies() const { return m_copies; }

    std::vector<osg::Vec2f> coordinates(const osg::Buffer<osg::Vec3f>& positions) const
    {
        std::vector<osg::Vec2f> result;
        result.reserve(positions.size());
        for (std::size_t i = 0; i < positions.size(); ++i) {
            const Side& side = sides[m_sides[i] == noSide ? top : m_sides[i]];
            result.push_back({along(side.u, positions[i]), along(side.v, positions[i])});
        }
        return result;
    }

private:
    std::uint32_t doubled(std::uint32_t vertex)
    {
        m_copies.push_back(vertex < m_count ? vertex : m_copies[vertex - m_count]);
        m_sides.push_back(noSide);
        m_next.push_back(0);
        return static_cast<std::uint32_t>(m_sides.size() - 1);
    }

    std::size_t m_count;               ///< without copies
    std::vector<std::uint8_t> m_sides; ///< of each vertex, `noSide` as long as nothing has taken it
    std::vector<std::uint32_t> m_next; ///< the same vertex on another side, 0 if there is none yet
    std::vector<std::uint32_t> m_copies;
};

} // namespace

osg::Mesh withBoxCoordinates(const osg::Mesh& mesh)
{
    if (mesh.triangles.empty())
        return mesh;
    const std::size_t count = mesh.positions.size();
    SidedVertices vertices(count);
    std::vector<std::uint32_t> triangles(mesh.triangles.begin(), mesh.triangles.end());
    for (std::size_t first = 0; first + 2 < triangles.size(); first += 3) {
        std::uint32_t* const corners = triangles.data() + first;
        if (corners[0] >= count || corners[1] >= count || corners[2] >= count)
            continue;
        if (const auto side = sideOf(mesh, corners))
            for (std::size_t i = 0; i < 3; ++i)
                corners[i] = vertices.taken(corners[i], *side);
    }
    osg::Mesh result = mesh;
    appendVertexCopies(result, vertices.copies());
    result.texCoords = vertices.coordinates(result.positions);
    result.triangles = std::move(triangles);
    return result;
}

} // namespace geometry
