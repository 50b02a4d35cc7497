#include "ptx/occt/SolidOrientation.h"

#include "ptx/occt/meshing/ShapeQueries.h"

#include <BRepClass3d_SolidClassifier.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <ShapeBuild_ReShape.hxx>
#include <ShapeFix_Shape.hxx>
#include <ShapeFix_Solid.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>

#include <cmath>
#include <functional>
#include <optional>

namespace ptx::occt
{

namespace
{

// The volume between mesh and surfaces is at most area times deviation; the rest is for gaps along the edges.
constexpr double Doubt = 2;

bool hasOneShell(const TopoDS_Shape& solid)
{
    return solid.NbChildren() == 1 && TopoDS_Iterator(solid).Value().ShapeType() == TopAbs_SHELL;
}

bool isClosed(const TopoDS_Shape& solid)
{
    return hasOneShell(solid) && occt::meshing::freeEdgeCount(solid) == 0;
}

bool allHaveOneShell(const TopoDS_Shape& shape)
{
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next())
        if (!hasOneShell(solid.Current()))
            return false;
    return true;
}

void finishByOcct(const TopoDS_Shape& solid, ShapeFix_Shape& fixer)
{
    const Handle(ShapeFix_Solid) tool = fixer.FixSolidTool();
    tool->Init(TopoDS::Solid(solid));
    tool->FixShellMode() = 0;
    tool->FixShellOrientationMode() = 1;
    tool->Perform();
}

/// What the triangles of a solid enclose, summed up in tetrahedra with their tips at its first point.
class EnclosedVolume
{
public:
    explicit EnclosedVolume(const TopoDS_Shape& solid)
    {
        for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next())
            add(TopoDS::Face(face.Current()));
    }

    /// @return nothing if the mesh is too coarse to tell
    std::optional<bool> isNegative(double deviation) const
    {
        if (!m_isWhole || !(std::abs(m_volume) > Doubt * m_area * deviation))
            return std::nullopt;
        return m_volume < 0;
    }

private:
    void add(const TopoDS_Face& face)
    {
        TopLoc_Location location;
        const Handle(Poly_Triangulation)& mesh = BRep_Tool::Triangulation(face, location);
        m_isWhole = m_isWhole && !mesh.IsNull() && mesh->NbTriangles() > 0;
        if (!m_isWhole)
            return;
        const gp_Trsf place = location.Transformation();
        if (!m_tip)
            m_tip = mesh->Node(1).Transformed(place).XYZ();
        const bool isReversed = (face.Orientation() == TopAbs_REVERSED) != (place.VectorialPart().Determinant() < 0);
        for (int i = 1; i <= mesh->NbTriangles(); ++i)
            add(*mesh, mesh->Triangle(i), place, isReversed ? -1 : 1);
    }

    void add(const Poly_Triangulation& mesh, const Poly_Triangle& triangle, const gp_Trsf& place, double sign)
    {
        const auto corner = [&](int k) { return mesh.Node(triangle(k)).Transformed(place).XYZ() - *m_tip; };
        const gp_XYZ a = corner(1);
        const gp_XYZ normal = (corner(2) - a) ^ (corner(3) - a);
        m_volume += sign * a.Dot(normal) / 6;
        m_area += normal.Modulus() / 2;
    }

    std::optional<gp_XYZ> m_tip;
    double m_volume = 0;
    double m_area = 0;
    bool m_isWhole = true;
};

bool isInsideOutByRay(const TopoDS_Shape& solid)
{
    try {
        BRepClass3d_SolidClassifier classifier(solid);
        classifier.PerformInfinitePoint(Precision::Confusion());
        return classifier.State() == TopAbs_IN;
    } catch (const Standard_Failure&) {
        return false; // OCCT's healing leaves a solid as it is then
    }
}

TopoDS_Shape turned(const TopoDS_Shape& solid)
{
    const BRep_Builder builder;
    TopoDS_Solid result;
    builder.MakeSolid(result);
    for (TopoDS_Iterator shell(solid, false, false); shell.More(); shell.Next())
        builder.Add(result, shell.Value().Reversed());
    return result.Located(solid.Location()).Oriented(solid.Orientation());
}

void orient(occt::meshing::ShapeBody& body, const std::function<bool(const TopoDS_Shape&)>& isInsideOut)
{
    if (!body.mayBeInsideOut)
        return;
    body.mayBeInsideOut = false;
    const Handle(ShapeBuild_ReShape) changes = new ShapeBuild_ReShape;
    for (TopExp_Explorer solid(body.shape, TopAbs_SOLID); solid.More(); solid.Next())
        if (isClosed(solid.Current()) && isInsideOut(solid.Current()))
            changes->Replace(solid.Current(), turned(solid.Current()));
    body.shape = changes->Apply(body.shape);
}

} // namespace

TopoDS_Shape healUnoriented(ShapeFix_Shape& fixer, occt::meshing::ShapeBody& body)
{
    const bool canWait = allHaveOneShell(body.shape);
    fixer.FixSolidTool()->FixShellOrientationMode() = canWait ? 0 : 1;
    fixer.Perform();
    const TopoDS_Shape healed = fixer.Shape();
    if (healed.IsNull() || !canWait)
        return healed;
    body.mayBeInsideOut = true;
    for (TopExp_Explorer solid(healed, TopAbs_SOLID); solid.More(); solid.Next())
        if (!isClosed(solid.Current()))
            finishByOcct(solid.Current(), fixer);
    return fixer.Context()->Apply(healed);
}

void orientByMesh(occt::meshing::ShapeBody& body, double deviation)
{
    orient(body, [deviation](const TopoDS_Shape& solid) {
        const std::optional<bool> isNegative = EnclosedVolume(solid).isNegative(deviation);
        return isNegative ? *isNegative : isInsideOutByRay(solid);
    });
}

void orientByRay(occt::meshing::ShapeBody& body)
{
    orient(body, isInsideOutByRay);
}

} // namespace ptx::occt
