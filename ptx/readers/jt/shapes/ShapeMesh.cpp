#include "ptx/readers/jt/shapes/ShapeMesh.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace ptx::jt::shapes
{

namespace
{

constexpr std::uint32_t NotYet = 0xFFFFFFFFu;

double determinant(const graph::Placement& m)
{
    return m[0] * (m[5] * m[10] - m[6] * m[9]) - m[1] * (m[4] * m[10] - m[6] * m[8]) +
           m[2] * (m[4] * m[9] - m[5] * m[8]);
}

// Normals turn with the cofactors, which are the inverse's transpose but for a factor.
graph::Placement cofactors(const graph::Placement& m)
{
    const double sign = determinant(m) < 0 ? -1 : 1;
    graph::Placement c{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            const std::size_t r1 = (row + 1) % 3 * 4;
            const std::size_t r2 = (row + 2) % 3 * 4;
            const std::size_t c1 = (column + 1) % 3;
            const std::size_t c2 = (column + 2) % 3;
            c[4 * row + column] = sign * (m[r1 + c1] * m[r2 + c2] - m[r1 + c2] * m[r2 + c1]);
        }
    return c;
}

class ShapeAdder
{
public:
    ShapeAdder(model::MeshBuilder& mesh, const Shape& shape, const graph::Placement& placement, double unit)
        : m_mesh(mesh), m_shape(shape), m_isMoved(placement != graph::NoMove), m_placement(placement),
          m_forNormals(cofactors(placement)), m_unit(unit), m_records(shape.records()),
          m_vertices(shape.positions.size() + m_records, NotYet)
    {
    }

    std::size_t add()
    {
        for (const std::array<Corner, 2>& line : m_shape.lines)
            if (isFinite(line)) {
                const std::uint32_t start = vertex(line[0]);
                m_mesh.addLine(start, vertex(line[1]));
            }
        for (const Corner& point : m_shape.points)
            if (isFinite({&point, 1}))
                m_mesh.addPoint(vertex(point));
        return addFaces();
    }

private:
    std::size_t addFaces()
    {
        std::vector<std::size_t> order(m_shape.triangles.size());
        std::iota(order.begin(), order.end(), std::size_t(0));
        const auto group = [&](std::size_t i) { return m_shape.triangles[i].group; };
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return group(a) < group(b); });
        const bool isMirrored = determinant(m_placement) < 0;
        std::size_t added = 0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            added += addTriangle(m_shape.triangles[order[i]], isMirrored) ? 1 : 0;
            if (i + 1 == order.size() || group(order[i]) != group(order[i + 1]))
                m_mesh.endFace();
        }
        return added;
    }

    bool isFinite(std::span<const Corner> corners) const
    {
        for (const Corner& corner : corners)
            for (const float value : m_shape.positions[corner.position])
                if (!std::isfinite(value))
                    return false;
        return true;
    }

    bool addTriangle(const Triangle& triangle, bool isMirrored)
    {
        if (!isFinite(triangle.corners))
            return false;
        const std::uint32_t a = vertex(triangle.corners[0]);
        const std::uint32_t b = vertex(triangle.corners[1]);
        const std::uint32_t c = vertex(triangle.corners[2]);
        m_mesh.addTriangle(a, isMirrored ? c : b, isMirrored ? b : c);
        return true;
    }

    // A record stands for one position, and so for one vertex.
    std::uint32_t vertex(const Corner& corner)
    {
        const bool hasRecord = corner.record < m_records;
        std::uint32_t& number = m_vertices[hasRecord ? m_shape.positions.size() + corner.record : corner.position];
        if (number == NotYet) {
            const osg::Vec3f at = position(m_shape.positions[corner.position]);
            const bool hasNormal = hasRecord && !m_shape.normals.empty();
            number = hasNormal ? m_mesh.addVertex(at, direction(m_shape.normals[corner.record])) : m_mesh.addVertex(at);
            if (hasRecord)
                addAttributes(corner.record);
        }
        return number;
    }

    void addAttributes(std::uint32_t record)
    {
        if (!m_shape.colours.empty()) {
            const codec::Colour& c = m_shape.colours[record];
            m_mesh.addColor({c[0], c[1], c[2], c[3]});
        }
        if (!m_shape.textureCoordinates.empty()) {
            const codec::TextureCoordinate& t = m_shape.textureCoordinates[record];
            m_mesh.addTexCoord({t[0], t[1]});
        }
    }

    osg::Vec3f position(const codec::Vector& p) const
    {
        std::array<double, 3> q = {p[0], p[1], p[2]};
        if (m_isMoved)
            q = times(m_placement, p, 1);
        return {static_cast<float>(q[0] * m_unit), static_cast<float>(q[1] * m_unit),
                static_cast<float>(q[2] * m_unit)};
    }

    osg::Vec3f direction(const codec::Vector& n) const
    {
        if (!m_isMoved)
            return {n[0], n[1], n[2]};
        const std::array<double, 3> d = times(m_forNormals, n, 0);
        const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        const double factor = length > 0 ? 1 / length : 0;
        return {static_cast<float>(d[0] * factor), static_cast<float>(d[1] * factor),
                static_cast<float>(d[2] * factor)};
    }

    static std::array<double, 3> times(const graph::Placement& m, const codec::Vector& v, double w)
    {
        std::array<double, 3> r{};
        for (std::size_t i = 0; i < 3; ++i)
            r[i] = static_cast<double>(v[0]) * m[i] + static_cast<double>(v[1]) * m[4 + i] +
                   static_cast<double>(v[2]) * m[8 + i] + w * m[12 + i];
        return r;
    }

    model::MeshBuilder& m_mesh;
    const Shape& m_shape;
    bool m_isMoved;
    graph::Placement m_placement;
    graph::Placement m_forNormals;
    double m_unit;
    std::size_t m_records;
    std::vector<std::uint32_t> m_vertices;
};

} // namespace

std::size_t addShape(model::MeshBuilder& mesh, const Shape& shape, const graph::Placement& placement, double unit)
{
    return ShapeAdder(mesh, shape, placement, unit).add();
}

} // namespace ptx::jt::shapes
