#include "ptx/occt/meshing/FaceMesh.h"

#include "ptx/model/MeshBuilder.h"
#include "ptx/occt/meshing/NodeCoordinates.h"

#include <BRep_Tool.hxx>
#include <GeomLProp_SLProps.hxx>
#include <Geom_Surface.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Trsf.hxx>

#include <cmath>
#include <optional>
#include <vector>

namespace ptx::occt::meshing
{

namespace
{

/// The normal at a node of a face, along that of its surface.
struct NodeNormal {
    gp_XYZ direction;
    bool isRegular = true; ///< the surface has one normal there, and no other from another side
};

/// Whether `normal` is no more than 60 degrees off the plane of a triangle with this normal.
bool isNear(const gp_XYZ& normal, const gp_XYZ& plane)
{
    constexpr double leastCosine = 0.5;
    return normal * plane >= leastCosine * normal.Modulus() * plane.Modulus();
}

class FaceAppender
{
public:
    FaceAppender(const TopoDS_Face& face, const Poly_Triangulation& mesh, const gp_Trsf& place, Coordinates coordinates,
                 model::MeshBuilder& builder)
        : m_mesh(mesh), m_builder(builder), m_place(place),
          m_isReversed((face.Orientation() == TopAbs_REVERSED) != (place.VectorialPart().Determinant() < 0)),
          m_isFlipped(face.Orientation() == TopAbs_REVERSED)
    {
        TopLoc_Location location;
        const Handle(Geom_Surface)& surface = BRep_Tool::Surface(face, location);
        m_hasSurface = !surface.IsNull() && mesh.HasUVNodes();
        if (!m_hasSurface)
            return;
        m_properties.SetSurface(surface);
        if (coordinates == Coordinates::Surface)
            m_coordinates.emplace(surface, mesh, m_isReversed, std::abs(place.ScaleFactor()));
    }

    void append()
    {
        const std::vector<gp_XYZ> sums = triangleNormals();
        for (int i = 1; i <= m_mesh.NbNodes(); ++i) {
            m_normals.push_back(normalAt(i, sums));
            m_first = std::min(m_first, addVertex(i, m_normals.back().direction));
            if (m_coordinates)
                m_builder.addTexCoord(m_coordinates->of(i));
        }
        for (int i = 1; i <= m_mesh.NbTriangles(); ++i)
            appendTriangle(i);
        m_builder.endFace();
    }

private:
    struct Triangle {
        int nodes[3];
        gp_XYZ normal; ///< of its plane; its length is twice the area
    };

    Triangle triangle(int index) const
    {
        Triangle result;
        m_mesh.Triangle(index).Get(result.nodes[0], result.nodes[1], result.nodes[2]);
        const gp_XYZ a = m_mesh.Node(result.nodes[0]).XYZ();
        result.normal = (m_mesh.Node(result.nodes[1]).XYZ() - a) ^ (m_mesh.Node(result.nodes[2]).XYZ() - a);
        return result;
    }

    // Where the surface has no normal (the tip of a cone) that of the triangles around stands in.
    std::vector<gp_XYZ> triangleNormals() const
    {
        std::vector<gp_XYZ> sums(static_cast<std::size_t>(m_mesh.NbNodes()));
        for (int i = 1; i <= m_mesh.NbTriangles(); ++i) {
            const Triangle all = triangle(i);
            for (const int node : all.nodes)
                sums[static_cast<std::size_t>(node) - 1] += all.normal;
        }
        return sums;
    }

    // Where lines of the surface come together in one point, its normal is that of one side.
    bool isRegularHere()
    {
        constexpr double flat = 1e-7;
        const gp_XYZ u = m_properties.D1U().XYZ(), v = m_properties.D1V().XYZ();
        return (u ^ v).Modulus() > flat * (u.SquareModulus() + v.SquareModulus());
    }

    NodeNormal normalAt(int node, const std::vector<gp_XYZ>& sums)
    {
        const gp_XYZ& sum = sums[static_cast<std::size_t>(node) - 1];
        if (m_hasSurface) {
            const gp_Pnt2d uv = m_mesh.UVNode(node);
            m_properties.SetParameters(uv.X(), uv.Y());
            if (m_properties.IsNormalDefined())
                return {m_properties.Normal().XYZ(), isRegularHere()};
        }
        return {sum.Modulus() > gp::Resolution() ? sum.Normalized() : gp_XYZ(0, 0, 1), !m_hasSurface};
    }

    std::uint32_t addVertex(int node, const gp_XYZ& normal)
    {
        return m_builder.addVertex(toVec3f(m_mesh.Node(node).Transformed(m_place).XYZ()), toVec3f(placed(normal)));
    }

    gp_XYZ placed(const gp_XYZ& normal) const
    {
        gp_XYZ result = normal;
        result.Multiply(m_place.VectorialPart());
        const double length = result.Modulus();
        return length > 0 ? result * ((m_isFlipped ? -1 : 1) / length) : result;
    }

    const NodeNormal& normalOf(int node) const { return m_normals[static_cast<std::size_t>(node) - 1]; }

    gp_XYZ normalFor(const Triangle& all, int node) const
    {
        const NodeNormal& normal = normalOf(node);
        if (normal.isRegular || isNear(normal.direction, all.normal))
            return normal.direction;
        gp_XYZ around(0, 0, 0);
        for (const int other : all.nodes)
            if (other != node && normalOf(other).isRegular)
                around += normalOf(other).direction;
        return around.Modulus() > gp::Resolution() ? around : all.normal;
    }

    // The vertex of a corner: one of its own where the surface's normal is that of another side, and at poles of the
    // texture.
    std::uint32_t vertexFor(const Triangle& all, int corner)
    {
        const int node = all.nodes[corner];
        const NodeNormal& normal = normalOf(node);
        const bool isPole = m_coordinates && m_coordinates->isPole(node);
        if (!isPole && (normal.isRegular || isNear(normal.direction, all.normal)))
            return m_first + static_cast<std::uint32_t>(node - 1);
        const std::uint32_t own = addVertex(node, normalFor(all, node));
        if (m_coordinates)
            m_builder.addTexCoord(m_coordinates->ofCorner(all.nodes, corner));
        return own;
    }

    void appendTriangle(int index)
    {
        const Triangle all = triangle(index);
        std::uint32_t corners[3];
        for (int i = 0; i < 3; ++i)
            corners[i] = vertexFor(all, i);
        if (m_isReversed)
            std::swap(corners[1], corners[2]);
        m_builder.addTriangle(corners[0], corners[1], corners[2]);
    }

    const Poly_Triangulation& m_mesh;
    model::MeshBuilder& m_builder;
    const gp_Trsf& m_place;
    GeomLProp_SLProps m_properties{1, Precision::Confusion()};
    bool m_hasSurface = false;
    bool m_isReversed;
    bool m_isFlipped;
    std::optional<NodeCoordinates> m_coordinates;
    std::vector<NodeNormal> m_normals; ///< of the nodes, in their order
    std::uint32_t m_first = static_cast<std::uint32_t>(-1);
};

} // namespace

bool appendFaceMesh(const TopoDS_Face& face, model::MeshBuilder& builder, Coordinates coordinates)
{
    TopLoc_Location location;
    const Handle(Poly_Triangulation)& mesh = BRep_Tool::Triangulation(face, location);
    if (mesh.IsNull() || mesh->NbTriangles() == 0)
        return false;
    // Each corner may need a vertex of its own.
    if (!builder.hasRoomFor(static_cast<std::size_t>(mesh->NbNodes()) + 3 * std::size_t(mesh->NbTriangles())))
        return false;
    const gp_Trsf place = location.Transformation();
    FaceAppender(face, *mesh, place, coordinates, builder).append();
    return true;
}

bool hasParameters(const TopoDS_Face& face)
{
    TopLoc_Location location;
    const Handle(Poly_Triangulation)& mesh = BRep_Tool::Triangulation(face, location);
    return !mesh.IsNull() && mesh->HasUVNodes() && !BRep_Tool::Surface(face, location).IsNull();
}

} // namespace ptx::occt::meshing
