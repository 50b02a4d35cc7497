#include "ptx/occt/MeshExtraction.h"

#include "ptx/model/MeshBuilder.h"
#include "ptx/occt/meshing/BrepBlob.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>

#include <map>
#include <vector>

namespace ptx::occt
{

namespace
{

using occt::meshing::Mark;

class Extractor
{
public:
    Extractor(const occt::meshing::ShapeBody& body, const occt::meshing::Tolerance& tolerance,
              const PieceWishes& wishes)
        : m_body(body), m_tolerance(tolerance), m_wishes(wishes)
    {
    }

    PartResult extract()
    {
        for (TopExp_Explorer face(m_body.shape, TopAbs_FACE); face.More(); face.Next())
            addFace(TopoDS::Face(face.Current()));
        for (TopExp_Explorer edge(m_body.shape, TopAbs_EDGE, TopAbs_FACE); edge.More(); edge.Next())
            addEdge(TopoDS::Edge(edge.Current()));
        for (auto& [mark, group] : m_groups) {
            const bool hasMesh = !group.builder.isEmpty();
            addPiece(mark, group.builder);
            if (hasMesh && m_wishes.keepBrep)
                addBrep(group.faces);
        }
        for (auto& [mark, builder] : m_wireBuilders)
            addPiece(mark, builder);
        return std::move(m_result);
    }

private:
    Mark markOf(const TopoDS_Shape& shape) const
    {
        const Mark* known = m_body.marks.Seek(shape);
        return known ? *known : Mark();
    }

    void addFace(const TopoDS_Face& face)
    {
        ++m_result.faces;
        FaceGroup& group = m_groups[markOf(face)];
        if (!occt::meshing::appendFaceMesh(face, group.builder, m_wishes.coordinates)) {
            ++m_result.emptyFaces;
            return;
        }
        if (m_wishes.keepBrep)
            group.faces.push_back(face);
        if (m_wishes.coordinates == occt::meshing::Coordinates::Surface && !occt::meshing::hasParameters(face))
            ++m_result.facesWithoutParameters;
    }

    void addEdge(const TopoDS_Edge& edge)
    {
        if (BRep_Tool::Degenerated(edge))
            return;
        try {
            BRepAdaptor_Curve curve(edge);
            appendCurve(GCPnts_TangentialDeflection(curve, m_tolerance.angle, m_tolerance.deviation),
                        m_wireBuilders[markOf(edge)]);
        } catch (const Standard_Failure&) {
            ++m_result.emptyFaces;
        }
    }

    static void appendCurve(const GCPnts_TangentialDeflection& points, model::MeshBuilder& builder)
    {
        if (points.NbPoints() < 2 || !builder.hasRoomFor(static_cast<std::size_t>(points.NbPoints())))
            return;
        std::uint32_t last = builder.addVertex(occt::meshing::toVec3f(points.Value(1).XYZ()));
        for (int i = 2; i <= points.NbPoints(); ++i) {
            const std::uint32_t next = builder.addVertex(occt::meshing::toVec3f(points.Value(i).XYZ()));
            builder.addLine(last, next);
            last = next;
        }
    }

    void addPiece(const Mark& mark, model::MeshBuilder& builder)
    {
        m_result.triangles += builder.triangleCount();
        if (!builder.isEmpty())
            m_result.body.pieces.push_back({mark.appearance, builder.take(), mark.views});
    }

    void addBrep(const std::vector<TopoDS_Face>& faces)
    {
        TopoDS_Compound all;
        BRep_Builder builder;
        builder.MakeCompound(all);
        for (const TopoDS_Face& face : faces)
            builder.Add(all, face);
        auto mesh = std::make_shared<osg::Mesh>(*m_result.body.pieces.back().mesh);
        mesh->brep = occt::meshing::brepBlob(all);
        m_result.body.pieces.back().mesh = std::move(mesh);
    }

    struct FaceGroup {
        model::MeshBuilder builder;
        std::vector<TopoDS_Face> faces; ///< only when their surfaces are kept
    };

    const occt::meshing::ShapeBody& m_body;
    const occt::meshing::Tolerance& m_tolerance;
    const PieceWishes& m_wishes;
    std::map<Mark, FaceGroup> m_groups;
    std::map<Mark, model::MeshBuilder> m_wireBuilders; // apart: lines have no normals
    PartResult m_result;
};

} // namespace

PartResult extract(const occt::meshing::ShapeBody& body, const occt::meshing::Tolerance& tolerance,
                   const PieceWishes& wishes)
{
    return Extractor(body, tolerance, wishes).extract();
}

} // namespace ptx::occt
