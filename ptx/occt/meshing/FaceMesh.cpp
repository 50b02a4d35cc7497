#include "ptx/occt/meshing/FaceMesh.h"

#include "ptx/model/MeshBuilder.h"

#include <BRep_Tool.hxx>
#include <GeomLProp_SLProps.hxx>
#include <Geom_Surface.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Trsf.hxx>

#include <vector>

namespace ptx::occt::meshing
{

namespace
{

class FaceAppender
{
public:
    FaceAppender(const TopoDS_Face& face, const Poly_Triangulation& mesh, const gp_Trsf& place,
                 model::MeshBuilder& builder)
        : m_mesh(mesh), m_builder(builder), m_place(place),
          m_isReversed((face.Orientation() == TopAbs_REVERSED) != (place.VectorialPart().Determinant() < 0)),
          m_isFlipped(face.Orientation() == TopAbs_REVERSED)
    {
        TopLoc_Location location;
        const Handle(Geom_Surface)& surface = BRep_Tool::Surface(face, location);
        m_hasSurface = !surface.IsNull() && mesh.HasUVNodes();
        if (m_hasSurface)
            m_properties.SetSurface(surface);
    }

    void append()
    {
        const std::vector<gp_XYZ> normals = triangleNormals();
        for (int i = 1; i <= m_mesh.NbNodes(); ++i)
            m_first = std::min(m_first, m_builder.addVertex(toVec3f(m_mesh.Node(i).Transformed(m_place).XYZ()),
                                                            toVec3f(placed(normalAt(i, normals)))));
        for (int i = 1; i <= m_mesh.NbTriangles(); ++i)
            appendTriangle(i);
        m_builder.endFace();
    }

private:
    // Where the surface has no normal (the tip of a cone) that of the triangles around stands in.
    std::vector<gp_XYZ> triangleNormals() const
    {
        std::vector<gp_XYZ> sums(static_cast<std::size_t>(m_mesh.NbNodes()));
        for (int i = 1; i <= m_mesh.NbTriangles(); ++i) {
            int n[3];
            m_mesh.Triangle(i).Get(n[0], n[1], n[2]);
            const gp_XYZ a = m_mesh.Node(n[0]).XYZ();
            const gp_XYZ normal = (m_mesh.Node(n[1]).XYZ() - a) ^ (m_mesh.Node(n[2]).XYZ() - a);
            for (const int node : n)
                sums[static_cast<std::size_t>(node) - 1] += normal;
        }
        return sums;
    }

    gp_XYZ normalAt(int node, const std::vector<gp_XYZ>& sums)
    {
        const gp_XYZ& sum = sums[static_cast<std::size_t>(node) - 1];
        if (m_hasSurface) {
            const gp_Pnt2d uv = m_mesh.UVNode(node);
            m_properties.SetParameters(uv.X(), uv.Y());
            if (m_properties.IsNormalDefined())
                return m_properties.Normal().XYZ();
        }
        return sum.Modulus() > gp::Resolution() ? sum.Normalized() : gp_XYZ(0, 0, 1);
    }

    gp_XYZ placed(const gp_XYZ& normal) const
    {
        gp_XYZ result = normal;
        result.Multiply(m_place.VectorialPart());
        const double length = result.Modulus();
        return length > 0 ? result * ((m_isFlipped ? -1 : 1) / length) : result;
    }

    void appendTriangle(int index)
    {
        int a = 0;
        int b = 0;
        int c = 0;
        m_mesh.Triangle(index).Get(a, b, c);
        if (m_isReversed)
            std::swap(b, c);
        const auto vertex = [this](int node) { return m_first + static_cast<std::uint32_t>(node - 1); };
        m_builder.addTriangle(vertex(a), vertex(b), vertex(c));
    }

    const Poly_Triangulation& m_mesh;
    model::MeshBuilder& m_builder;
    const gp_Trsf& m_place;
    GeomLProp_SLProps m_properties{1, Precision::Confusion()};
    bool m_hasSurface = false;
    bool m_isReversed;
    bool m_isFlipped;
    std::uint32_t m_first = static_cast<std::uint32_t>(-1);
};

} // namespace

bool appendFaceMesh(const TopoDS_Face& face, model::MeshBuilder& builder)
{
    TopLoc_Location location;
    const Handle(Poly_Triangulation)& mesh = BRep_Tool::Triangulation(face, location);
    if (mesh.IsNull() || mesh->NbTriangles() == 0 || !builder.hasRoomFor(static_cast<std::size_t>(mesh->NbNodes())))
        return false;
    const gp_Trsf place = location.Transformation();
    FaceAppender(face, *mesh, place, builder).append();
    return true;
}

} // namespace ptx::occt::meshing
