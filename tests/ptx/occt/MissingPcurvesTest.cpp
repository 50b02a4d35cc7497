#include "ptx/occt/MissingPcurves.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRepLib.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom_BezierSurface.hxx>
#include <ShapeBuild_Edge.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>

#include <gtest/gtest.h>

#include <vector>

namespace
{

constexpr double Precision = 1e-4;

/// A face of 30 by 30 that is bent both ways, `height` high.
TopoDS_Face bentFace(double height)
{
    TColgp_Array2OfPnt poles(1, 4, 1, 4);
    for (int u = 1; u <= 4; ++u)
        for (int v = 1; v <= 4; ++v)
            poles.SetValue(u, v, gp_Pnt(10.0 * (u - 1), 10.0 * (v - 1), u == 2 || v == 3 ? height : 0.5 * (u + v)));
    const Handle(Geom_Surface) surface = new Geom_BezierSurface(poles);
    TopoDS_Face face = BRepBuilderAPI_MakeFace(surface, Precision).Face();
    BRepLib::BuildCurves3d(face);
    return face;
}

std::vector<TopoDS_Edge> edgesOf(const TopoDS_Shape& shape)
{
    std::vector<TopoDS_Edge> edges;
    for (TopExp_Explorer item(shape, TopAbs_EDGE); item.More(); item.Next())
        edges.push_back(TopoDS::Edge(item.Current()));
    return edges;
}

/// `face` with the curves in space only, as STEP files have them.
template <class Face>
Face bare(const Face& face)
{
    for (const TopoDS_Edge& edge : edgesOf(face))
        ShapeBuild_Edge().RemovePCurve(edge, TopoDS::Face(face));
    return face;
}

Handle(Geom2d_Curve) curveOn(const TopoDS_Face& face, const TopoDS_Edge& edge, double& first, double& last)
{
    TopLoc_Location location;
    const Handle(Geom_Surface) surface = BRep_Tool::Surface(face, location);
    return BRep_Tool::CurveOnSurface(edge, surface, location, first, last);
}

bool hasCurve(const TopoDS_Face& face, const TopoDS_Edge& edge)
{
    double first = 0;
    double last = 0;
    return !curveOn(face, edge, first, last).IsNull();
}

/// How far the curve on the face is from the curve in space, at most.
double deviation(const TopoDS_Face& face, const TopoDS_Edge& edge)
{
    double first = 0;
    double last = 0;
    const Handle(Geom2d_Curve) onFace = curveOn(face, edge, first, last);
    const Handle(Geom_Surface) surface = BRep_Tool::Surface(face);
    const BRepAdaptor_Curve inSpace(edge);
    double most = 0;
    for (int step = 0; step <= 20; ++step) {
        const gp_Pnt2d at = onFace->Value(first + (last - first) * step / 20);
        const double parameter =
            inSpace.FirstParameter() + (inSpace.LastParameter() - inSpace.FirstParameter()) * step / 20;
        most = std::max(most, surface->Value(at.X(), at.Y()).Distance(inSpace.Value(parameter)));
    }
    return most;
}

TEST(MissingPcurvesTest, EdgesOfABentFaceAreProjectedOntoIt)
{
    const TopoDS_Face face = bare(bentFace(12));
    ASSERT_EQ(edgesOf(face).size(), 4u);
    for (const TopoDS_Edge& edge : edgesOf(face))
        ASSERT_FALSE(hasCurve(face, edge));
    ptx::occt::addMissingPcurves(face, Precision, false);
    for (const TopoDS_Edge& edge : edgesOf(face)) {
        ASSERT_TRUE(hasCurve(face, edge));
        EXPECT_LT(deviation(face, edge), Precision);
    }
}

TEST(MissingPcurvesTest, SeveralThreadsMakeTheSameCurvesAsOne)
{
    TopoDS_Compound one;
    TopoDS_Compound several;
    const BRep_Builder builder;
    builder.MakeCompound(one);
    builder.MakeCompound(several);
    for (int k = 0; k < 40; ++k) {
        builder.Add(one, bare(bentFace(k)));
        builder.Add(several, bare(bentFace(k)));
    }
    ptx::occt::addMissingPcurves(one, Precision, false);
    ptx::occt::addMissingPcurves(several, Precision, true);
    TopExp_Explorer left(one, TopAbs_FACE);
    for (TopExp_Explorer right(several, TopAbs_FACE); right.More(); right.Next(), left.Next()) {
        const TopoDS_Face leftFace = TopoDS::Face(left.Current());
        const TopoDS_Face rightFace = TopoDS::Face(right.Current());
        const std::vector<TopoDS_Edge> leftEdges = edgesOf(leftFace);
        const std::vector<TopoDS_Edge> rightEdges = edgesOf(rightFace);
        for (std::size_t k = 0; k < 4; ++k) {
            double first = 0;
            double last = 0;
            const Handle(Geom2d_Curve) a = curveOn(leftFace, leftEdges[k], first, last);
            const Handle(Geom2d_Curve) b = curveOn(rightFace, rightEdges[k], first, last);
            ASSERT_FALSE(a.IsNull() || b.IsNull());
            for (double t : {0.0, 0.3, 0.7, 1.0})
                ASSERT_EQ(a->Value(first + t * (last - first)).Distance(b->Value(first + t * (last - first))), 0);
        }
    }
}

TEST(MissingPcurvesTest, ACurveThatIsThereStays)
{
    const TopoDS_Face face = bentFace(7);
    double first = 0;
    double last = 0;
    const Handle(Geom2d_Curve) before = curveOn(face, edgesOf(face)[1], first, last);
    ptx::occt::addMissingPcurves(face, Precision, false);
    EXPECT_EQ(curveOn(face, edgesOf(face)[1], first, last), before);
}

/// The seam of a closed face, twice in its wire, needs a curve for each side, which the healing makes.
TEST(MissingPcurvesTest, SeamsAreLeftToTheHealing)
{
    const TopoDS_Shape cylinder = BRepBuilderAPI_NurbsConvert(BRepPrimAPI_MakeCylinder(5, 20).Shape()).Shape();
    const TopoDS_Face side = TopoDS::Face(TopExp_Explorer(cylinder, TopAbs_FACE).Current());
    const std::vector<TopoDS_Edge> edges = edgesOf(side);
    ASSERT_EQ(edges.size(), 4u);
    bare(side);
    ptx::occt::addMissingPcurves(side, Precision, false);
    int seams = 0;
    for (const TopoDS_Edge& edge : edges) {
        const auto isSame = [&](const TopoDS_Edge& other) { return other.IsSame(edge); };
        const bool isSeam = std::count_if(edges.begin(), edges.end(), isSame) == 2;
        seams += isSeam ? 1 : 0;
        EXPECT_EQ(hasCurve(side, edge), !isSeam);
    }
    EXPECT_EQ(seams, 2);
}

TEST(MissingPcurvesTest, FacesOfAnElementarySurfaceAreLeftToTheHealing)
{
    const TopoDS_Shape cylinder = BRepPrimAPI_MakeCylinder(5, 20).Shape();
    const TopoDS_Face side = bare(TopoDS::Face(TopExp_Explorer(cylinder, TopAbs_FACE).Current()));
    ptx::occt::addMissingPcurves(side, Precision, false);
    for (const TopoDS_Edge& edge : edgesOf(side))
        EXPECT_FALSE(hasCurve(side, edge));
}

} // namespace
