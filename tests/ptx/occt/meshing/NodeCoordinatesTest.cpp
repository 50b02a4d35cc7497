#include "ptx/model/MeshBuilder.h"
#include "ptx/occt/meshing/FaceMesh.h"
#include "ptx/occt/meshing/Meshing.h"
#include "tests/support/TextureScale.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Poly_Triangulation.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Trsf.hxx>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{

using namespace ptx::occt::meshing;
using std::numbers::pi;

osg::Mesh meshOf(const TopoDS_Shape& shape, Coordinates coordinates = Coordinates::Surface)
{
    tessellate(shape, Tolerance{0.05, 0.2}, false);
    ptx::model::MeshBuilder builder;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        EXPECT_TRUE(appendFaceMesh(TopoDS::Face(face.Current()), builder, coordinates));
    return *builder.take();
}

TopoDS_Face faceOf(const Handle(Geom_Surface) & surface, double u1, double u2, double v1, double v2)
{
    return BRepBuilderAPI_MakeFace(surface, u1, u2, v1, v2, 1e-6).Face();
}

/// On all triangles: a metre a picture, within 2 % each way, at right angles within a degree, not mirrored.
void expectTrueToScale(const TopoDS_Shape& shape)
{
    const osg::Mesh mesh = meshOf(shape);
    ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
    const std::vector<TextureScale> scales = TextureScale::ofAll(mesh);
    ASSERT_FALSE(scales.empty());
    for (const TextureScale& scale : scales) {
        EXPECT_NEAR(scale.u, 1000, 20);
        EXPECT_NEAR(scale.v, 1000, 20);
        EXPECT_NEAR(scale.degrees, 90, 1);
        EXPECT_FALSE(scale.isMirrored);
    }
}

/// The mean over the area.
double meanOf(const std::vector<TextureScale>& scales, double TextureScale::*value)
{
    double sum = 0, area = 0;
    for (const TextureScale& scale : scales) {
        sum += scale.*value * scale.area;
        area += scale.area;
    }
    return sum / area;
}

void expectFiniteAndUnmirrored(const osg::Mesh& mesh)
{
    ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
    for (const osg::Vec2f& place : mesh.texCoords) {
        EXPECT_TRUE(std::isfinite(place.x) && std::isfinite(place.y));
    }
    for (const TextureScale& scale : TextureScale::ofAll(mesh))
        EXPECT_FALSE(scale.isMirrored);
}

gp_Trsf mirror()
{
    gp_Trsf result;
    result.SetMirror(gp_Ax2(gp_Pnt(), gp_Dir(0, 0, 1)));
    return result;
}

/// A wavy curve whose parts of unequal length have parameters of other lengths.
Handle(Geom_BSplineCurve) waveCurve()
{
    TColgp_Array1OfPnt poles(1, 6);
    for (int i = 1; i <= 6; ++i)
        poles.SetValue(i, gp_Pnt(i * i * 4.0, i % 2 == 0 ? 20 : 0, 0));
    TColStd_Array1OfReal knots(1, 4);
    TColStd_Array1OfInteger multiplicities(1, 4);
    const double places[] = {0, 0.1, 0.9, 7};
    for (int i = 1; i <= 4; ++i) {
        knots.SetValue(i, places[i - 1]);
        multiplicities.SetValue(i, i == 1 || i == 4 ? 4 : 1);
    }
    return new Geom_BSplineCurve(poles, knots, multiplicities, 3);
}

/// The corner of each triangle at a pole, on the Z axis, is in the picture in the middle of the others, by this
/// coordinate.
void expectPolesInTheMiddle(const osg::Mesh& mesh, float osg::Vec2f::*coordinate)
{
    const auto isPole = [&](std::uint32_t vertex) {
        return std::hypot(mesh.positions[vertex].x, mesh.positions[vertex].y) < 1e-6F;
    };
    int count = 0;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const std::size_t first = i - i % 3;
        const std::uint32_t pole = mesh.triangles[i], a = mesh.triangles[first + (i + 1) % 3],
                            b = mesh.triangles[first + (i + 2) % 3];
        if (!isPole(pole) || isPole(a) || isPole(b))
            continue;
        ++count;
        EXPECT_NEAR(mesh.texCoords[pole].*coordinate,
                    (mesh.texCoords[a].*coordinate + mesh.texCoords[b].*coordinate) / 2, 1e-6);
    }
    EXPECT_GT(count, 8);
}

} // namespace

TEST(NodeCoordinates, PlanesAreTrueToScale)
{
    expectTrueToScale(BRepPrimAPI_MakeBox(30, 50, 70).Shape());
}

TEST(NodeCoordinates, CylindersAreTrueToScale)
{
    expectTrueToScale(BRepPrimAPI_MakeCylinder(25, 60).Shape());
}

TEST(NodeCoordinates, ConesAreTrueToScale)
{
    expectTrueToScale(BRepPrimAPI_MakeCone(40, 0, 30).Shape());
    expectTrueToScale(BRepPrimAPI_MakeCone(10, 40, 90).Shape());
    expectTrueToScale(BRepPrimAPI_MakeCone(40, 39.9999, 90).Shape());
}

TEST(NodeCoordinates, SoAreFacesInsideOutAndMirrored)
{
    for (const TopoDS_Shape& shape : {BRepPrimAPI_MakeBox(30, 50, 70).Shape(), BRepPrimAPI_MakeCylinder(25, 60).Shape(),
                                      BRepPrimAPI_MakeCone(40, 10, 30).Shape()}) {
        expectTrueToScale(shape.Reversed());
        expectTrueToScale(shape.Moved(TopLoc_Location(mirror()), false));
        expectTrueToScale(shape.Reversed().Moved(TopLoc_Location(mirror()), false));
    }
}

TEST(NodeCoordinates, APlaceThatScalesCounts)
{
    gp_Trsf larger;
    larger.SetScaleFactor(3);
    expectTrueToScale(BRepPrimAPI_MakeCylinder(25, 60).Shape().Moved(TopLoc_Location(larger), false));
}

TEST(NodeCoordinates, AConeIsUnrolledAroundItsTipAndUprightInItsMiddle)
{
    // 40 mm from the tip to the radius of 20 at v = 0; half of each angle is left when it is unrolled.
    const Handle(Geom_Surface) cone = new Geom_ConicalSurface(gp_Ax3(), pi / 6, 20);
    const osg::Mesh mesh = meshOf(faceOf(cone, 0.5, 2.5, 30, 60));
    ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        const double angle = std::atan2(mesh.positions[i].y, mesh.positions[i].x);
        const double length = mesh.positions[i].z / std::cos(pi / 6);
        EXPECT_NEAR(std::atan2(mesh.texCoords[i].x, mesh.texCoords[i].y + 0.04), (angle - 1.5) / 2, 1e-5);
        EXPECT_NEAR(std::hypot(mesh.texCoords[i].x, mesh.texCoords[i].y + 0.04), 0.04 + length / 1000, 1e-6);
    }
}

TEST(NodeCoordinates, HalvesOfACylinderGoOnFromEachOther)
{
    const Handle(Geom_Surface) cylinder = new Geom_CylindricalSurface(gp_Ax3(), 10);
    const osg::Mesh first = meshOf(faceOf(cylinder, 0, pi, 0, 40));
    const osg::Mesh second = meshOf(faceOf(cylinder, pi, 2 * pi, 0, 40));
    const auto atTheEdge = [](const osg::Mesh& mesh) {
        std::vector<float> values;
        for (std::size_t i = 0; i < mesh.positions.size(); ++i)
            if (mesh.positions[i].x < -9.999F)
                values.push_back(mesh.texCoords[i].x);
        return values;
    };
    ASSERT_FALSE(atTheEdge(first).empty() || atTheEdge(second).empty());
    for (const osg::Mesh& mesh : {first, second})
        for (const float value : atTheEdge(mesh))
            EXPECT_NEAR(value, pi * 0.01, 1e-6);
}

TEST(NodeCoordinates, ASphereIsTrueAlongMeridiansAndInTheMeanAround)
{
    const osg::Mesh mesh = meshOf(BRepPrimAPI_MakeSphere(50).Shape());
    expectFiniteAndUnmirrored(mesh);
    float least = 1, most = -1;
    for (const osg::Vec2f& place : mesh.texCoords) {
        least = std::min(least, place.x);
        most = std::max(most, place.x);
    }
    // The mean radius of the parallels is 2 / pi of the sphere's.
    EXPECT_NEAR(most - least, 2 * pi * 0.05 * 2 / pi, 1e-5);
    EXPECT_NEAR(meanOf(TextureScale::ofAll(mesh), &TextureScale::v), 1000, 20);
}

TEST(NodeCoordinates, TrianglesAtPolesStandUpright)
{
    const TopoDS_Shape sphere = BRepPrimAPI_MakeSphere(50).Shape();
    for (const TopoDS_Shape& shape : {sphere, BRepBuilderAPI_NurbsConvert(sphere).Shape()}) {
        const osg::Mesh mesh = meshOf(shape);
        expectFiniteAndUnmirrored(mesh);
        expectPolesInTheMiddle(mesh, &osg::Vec2f::x);
        // Along the meridians each vertex is where its latitude says.
        float lowest = 1;
        for (const osg::Vec2f& place : mesh.texCoords)
            lowest = std::min(lowest, place.y);
        for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
            const double latitude = std::asin(std::clamp(mesh.positions[i].z / 50.0, -1.0, 1.0));
            EXPECT_NEAR(mesh.texCoords[i].y - lowest, 0.05 * (latitude + pi / 2), 5e-5);
        }
    }
}

TEST(NodeCoordinates, LinesAlongVMayMeetToo)
{
    const TopoDS_Shape sphere = BRepBuilderAPI_NurbsConvert(BRepPrimAPI_MakeSphere(50).Shape()).Shape();
    const TopoDS_Face face = TopoDS::Face(TopExp_Explorer(sphere, TopAbs_FACE).Current());
    const Handle(Geom_BSplineSurface) turned = Handle(Geom_BSplineSurface)::DownCast(BRep_Tool::Surface(face)->Copy());
    turned->ExchangeUV();
    double u1, u2, v1, v2;
    turned->Bounds(u1, u2, v1, v2);
    const osg::Mesh mesh = meshOf(faceOf(turned, u1, u2, v1, v2));
    expectFiniteAndUnmirrored(mesh);
    expectPolesInTheMiddle(mesh, &osg::Vec2f::y);
}

TEST(NodeCoordinates, ATorusIsTrueAroundTheTubeAndInTheMeanAroundTheAxis)
{
    const osg::Mesh mesh = meshOf(BRepPrimAPI_MakeTorus(60, 20).Shape());
    expectFiniteAndUnmirrored(mesh);
    for (const TextureScale& scale : TextureScale::ofAll(mesh)) {
        EXPECT_NEAR(scale.v, 1000, 20);
        EXPECT_NEAR(scale.degrees, 90, 10);
        EXPECT_GT(scale.u, 1000 * 40 / 60 * 0.98);
        EXPECT_LT(scale.u, 1000 * 80 / 60.0 * 1.02);
    }
    const osg::Mesh outside = meshOf(BRepPrimAPI_MakeTorus(60, 20, -pi / 2, pi / 2).Shape());
    // Its mean radius is 60 + 20 * 2 / pi.
    float least = 1, most = -1;
    for (std::size_t i = 0; i < outside.positions.size(); ++i)
        if (std::hypot(outside.positions[i].x, outside.positions[i].y) > 79.999F) {
            least = std::min(least, outside.texCoords[i].x);
            most = std::max(most, outside.texCoords[i].x);
        }
    EXPECT_NEAR(most - least, 2 * pi * (0.06 + 0.02 * 2 / pi), 1e-5);
}

TEST(NodeCoordinates, SplinesAreMeasuredAlongTheirLines)
{
    const Handle(Geom_BSplineCurve) curve = waveCurve();
    const TopoDS_Shape sheet = BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeEdge(curve).Edge(), gp_Vec(0, 0, 50)).Shape();
    for (const TopoDS_Shape& shape : {sheet, BRepBuilderAPI_NurbsConvert(sheet).Shape()}) {
        const osg::Mesh mesh = meshOf(shape);
        expectFiniteAndUnmirrored(mesh);
        const auto atStart = static_cast<std::size_t>(
            std::min_element(mesh.positions.begin(), mesh.positions.end(),
                             [](const osg::Vec3f& a, const osg::Vec3f& b) { return a.x < b.x; }) -
            mesh.positions.begin());
        const osg::Vec2f start = mesh.texCoords[atStart];
        const GeomAdaptor_Curve measured(curve);
        for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
            const osg::Vec3f& place = mesh.positions[i];
            const GeomAPI_ProjectPointOnCurve foot(gp_Pnt(place.x, place.y, 0), curve);
            ASSERT_GT(foot.NbPoints(), 0);
            const double length =
                GCPnts_AbscissaPoint::Length(measured, measured.FirstParameter(), foot.LowerDistanceParameter());
            EXPECT_NEAR(std::abs(mesh.texCoords[i].x - start.x), length / 1000, 1e-4);
            EXPECT_NEAR(std::abs(mesh.texCoords[i].y - start.y), std::abs(place.z - mesh.positions[atStart].z) / 1000,
                        1e-6);
        }
    }
}

TEST(NodeCoordinates, ATwistedSplineHasTheMeanOfItsLines)
{
    // Twice as long at one end as at the other.
    TColgp_Array2OfPnt poles(1, 2, 1, 2);
    poles.SetValue(1, 1, gp_Pnt(0, 0, 0));
    poles.SetValue(2, 1, gp_Pnt(100, 0, 0));
    poles.SetValue(1, 2, gp_Pnt(0, 80, 0));
    poles.SetValue(2, 2, gp_Pnt(200, 80, 0));
    const Handle(Geom_Surface) surface = new Geom_BezierSurface(poles);
    const osg::Mesh mesh = meshOf(faceOf(surface, 0, 1, 0, 1));
    float least = 1, most = -1;
    for (const osg::Vec2f& place : mesh.texCoords) {
        least = std::min(least, place.x);
        most = std::max(most, place.x);
    }
    EXPECT_NEAR(most - least, 0.15, 1e-6);
}

TEST(NodeCoordinates, OthersStayAsTheyWere)
{
    for (const TopoDS_Shape& shape : {BRepPrimAPI_MakeSphere(50).Shape(), BRepPrimAPI_MakeCone(40, 0, 30).Shape()}) {
        const osg::Mesh without = meshOf(shape, Coordinates::None);
        EXPECT_TRUE(without.texCoords.empty());
        osg::Mesh with = meshOf(shape);
        EXPECT_GE(with.positions.size(), without.positions.size());
        ASSERT_EQ(with.triangles.size(), without.triangles.size());
        EXPECT_EQ(with.faces, without.faces);
        for (std::size_t i = 0; i < with.triangles.size(); ++i) {
            EXPECT_EQ(with.positions[with.triangles[i]], without.positions[without.triangles[i]]);
            EXPECT_EQ(with.normals[with.triangles[i]], without.normals[without.triangles[i]]);
        }
    }
}

TEST(NodeCoordinates, AMeshWithoutParametersHasNone)
{
    const Handle(Poly_Triangulation) triangles = new Poly_Triangulation(3, 1, false);
    triangles->SetNode(1, gp_Pnt(0, 0, 0));
    triangles->SetNode(2, gp_Pnt(1, 0, 0));
    triangles->SetNode(3, gp_Pnt(0, 1, 0));
    triangles->SetTriangle(1, Poly_Triangle(1, 2, 3));
    TopoDS_Face face;
    BRep_Builder().MakeFace(face, triangles);
    ptx::model::MeshBuilder builder;
    EXPECT_TRUE(appendFaceMesh(face, builder, Coordinates::Surface));
    EXPECT_TRUE(builder.take()->texCoords.empty());
    EXPECT_FALSE(hasParameters(face));
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(1, 2, 3).Shape();
    tessellate(box, Tolerance{0.05, 0.2}, false);
    EXPECT_TRUE(hasParameters(TopoDS::Face(TopExp_Explorer(box, TopAbs_FACE).Current())));
}
