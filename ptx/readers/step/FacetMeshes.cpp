#include "ptx/readers/step/FacetMeshes.h"

#include "ptx/model/MeshBuilder.h"
#include "ptx/readers/step/MeshPoints.h"
#include "scene/CornerNormals.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>
#include <utility>

namespace ptx::step
{

namespace
{

/// Triangles that meet at less are one smooth surface; in radians.
constexpr float CreaseAngle = 0.6F;

class FaceWriter
{
public:
    FaceWriter(const facets::FaceMesh& face, double millimetres) : m_face(face)
    {
        for (const facets::Point& point : face.points)
            m_points.push_back(inMillimetres(point, millimetres));
        for (std::size_t i = 0; i + 2 < face.triangles.size(); i += 3) {
            const std::uint32_t* corners = &face.triangles[i];
            if (std::all_of(corners, corners + 3, [this](std::uint32_t at) { return isInRange(m_points[at]); }))
                m_triangles.insert(m_triangles.end(), corners, corners + 3);
        }
        if (face.normals.empty() ||
            std::find(face.normals.begin(), face.normals.end(), facets::Point{}) != face.normals.end())
            findNormals();
    }

    std::size_t leftOut() const { return (m_face.triangles.size() - m_triangles.size()) / 3; }

    void addTo(model::MeshBuilder& builder)
    {
        for (std::size_t i = 0; i + 2 < m_triangles.size(); i += 3) {
            const std::uint32_t first = vertex(i, builder);
            const std::uint32_t second = vertex(i + 1, builder);
            builder.addTriangle(first, second, vertex(i + 2, builder));
        }
        builder.endFace();
    }

private:
    void findNormals()
    {
        std::vector<osg::PolygonFace> faces;
        for (std::uint32_t i = 0; i + 2 < m_triangles.size(); i += 3)
            faces.push_back({i, 3, i, i / 3});
        const osg::CornersOfPoints corners(m_triangles, m_points.size());
        m_found = osg::cornerNormals(m_points, m_triangles, faces, corners, CreaseAngle);
    }

    osg::Vec3f normalAt(std::size_t corner) const
    {
        const std::uint32_t point = m_triangles[corner];
        if (m_found.empty() || (!m_face.normals.empty() && m_face.normals[point] != facets::Point{}))
            return inMillimetres(m_face.normals[point], 1);
        return m_found[corner];
    }

    std::uint32_t vertex(std::size_t corner, model::MeshBuilder& builder)
    {
        const osg::Vec3f normal = normalAt(corner);
        const auto [known, isNew] = m_vertices.try_emplace({m_triangles[corner], normal.x, normal.y, normal.z});
        if (isNew)
            known->second = builder.addVertex(m_points[m_triangles[corner]], normal);
        return known->second;
    }

    const facets::FaceMesh& m_face;
    std::vector<osg::Vec3f> m_points;
    std::vector<std::uint32_t> m_triangles;
    std::vector<osg::Vec3f> m_found; ///< normals of corners; empty where all are written
    std::map<std::tuple<std::uint32_t, float, float, float>, std::uint32_t> m_vertices; ///< by point and normal
};

std::array<float, 5> keyOf(const std::optional<osg::Color4f>& color)
{
    return color ? std::array<float, 5>{1, color->red, color->green, color->blue, color->alpha}
                 : std::array<float, 5>{};
}

} // namespace

std::vector<FacetPiece> meshesOf(const facets::Part& part, double millimetres, std::size_t& outOfRange)
{
    std::map<std::array<float, 5>, std::pair<model::MeshBuilder, std::optional<osg::Color4f>>> builders;
    for (const facets::Face& face : part.faces) {
        auto& [builder, color] = builders[keyOf(face.color)];
        color = face.color;
        FaceWriter writer(face.mesh, millimetres);
        outOfRange += writer.leftOut();
        writer.addTo(builder);
    }
    std::vector<FacetPiece> pieces;
    for (auto& [key, built] : builders)
        if (!built.first.isEmpty())
            pieces.push_back({built.second, built.first.take()});
    return pieces;
}

} // namespace ptx::step
