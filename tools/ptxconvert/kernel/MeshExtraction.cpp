#include "tools/ptxconvert/kernel/MeshExtraction.h"

#include "tools/ptxconvert/kernel/FaceMesh.h"
#include "tools/ptxconvert/model/MeshBuilder.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>

#include <map>

namespace ptx
{

namespace
{

class Extractor
{
public:
    Extractor(const ShapeBody& body, const Tolerance& tolerance) : m_body(body), m_tolerance(tolerance) {}

    Extraction extract()
    {
        for (TopExp_Explorer face(m_body.shape, TopAbs_FACE); face.More(); face.Next())
            addFace(TopoDS::Face(face.Current()));
        for (TopExp_Explorer edge(m_body.shape, TopAbs_EDGE, TopAbs_FACE); edge.More(); edge.Next())
            addEdge(TopoDS::Edge(edge.Current()));
        for (auto& [appearance, builder] : m_builders)
            addPiece(appearance, builder);
        for (auto& [appearance, builder] : m_wireBuilders)
            addPiece(appearance, builder);
        return std::move(m_result);
    }

private:
    int appearanceOf(const TopoDS_Shape& shape) const
    {
        const int* known = m_body.appearances.Seek(shape);
        return known ? *known : NoAppearance;
    }

    void addFace(const TopoDS_Face& face)
    {
        ++m_result.faces;
        if (!appendFaceMesh(face, m_builders[appearanceOf(face)]))
            ++m_result.emptyFaces;
    }

    void addEdge(const TopoDS_Edge& edge)
    {
        if (BRep_Tool::Degenerated(edge))
            return;
        try {
            BRepAdaptor_Curve curve(edge);
            appendCurve(GCPnts_TangentialDeflection(curve, m_tolerance.angle, m_tolerance.deviation),
                        m_wireBuilders[appearanceOf(edge)]);
        } catch (const Standard_Failure&) {
            ++m_result.emptyFaces;
        }
    }

    static void appendCurve(const GCPnts_TangentialDeflection& points, MeshBuilder& builder)
    {
        if (points.NbPoints() < 2 || !builder.hasRoomFor(static_cast<std::size_t>(points.NbPoints())))
            return;
        std::uint32_t last = builder.addVertex(toVec3f(points.Value(1).XYZ()));
        for (int i = 2; i <= points.NbPoints(); ++i) {
            const std::uint32_t next = builder.addVertex(toVec3f(points.Value(i).XYZ()));
            builder.addLine(last, next);
            last = next;
        }
    }

    void addPiece(int appearance, MeshBuilder& builder)
    {
        m_result.triangles += builder.triangleCount();
        if (!builder.isEmpty())
            m_result.body.pieces.push_back({appearance, builder.take()});
    }

    const ShapeBody& m_body;
    const Tolerance& m_tolerance;
    std::map<int, MeshBuilder> m_builders;
    std::map<int, MeshBuilder> m_wireBuilders; // apart: lines have no normals
    Extraction m_result;
};

} // namespace

Extraction extract(const ShapeBody& body, const Tolerance& tolerance)
{
    return Extractor(body, tolerance).extract();
}

} // namespace ptx
