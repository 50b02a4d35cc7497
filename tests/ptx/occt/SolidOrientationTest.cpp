#include "ptx/occt/SolidOrientation.h"

#include "ptx/occt/Healing.h"
#include "ptx/occt/meshing/Meshing.h"

#include <BRepGProp.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <Poly_Triangulation.hxx>
#include <ShapeFix_Shape.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <gp_Trsf.hxx>

#include <gtest/gtest.h>

#include <vector>

namespace
{

constexpr double Deviation = 0.1;
constexpr double Volume = 2 * 3 * 4;

TopoDS_Solid box(double x = 0)
{
    return BRepPrimAPI_MakeBox(gp_Pnt(x, 0, 0), gp_Pnt(x + 2, 3, 4)).Solid();
}

TopoDS_Shape shellOf(const TopoDS_Shape& solid)
{
    return TopExp_Explorer(solid, TopAbs_SHELL).Current();
}

/// `container`, which was made just now, with `shapes` in it.
template <class Container>
Container filled(Container container, const std::vector<TopoDS_Shape>& shapes)
{
    for (const TopoDS_Shape& shape : shapes)
        BRep_Builder().Add(container, shape);
    return container;
}

TopoDS_Solid solidOf(const std::vector<TopoDS_Shape>& shells)
{
    TopoDS_Solid solid;
    BRep_Builder().MakeSolid(solid);
    return filled(solid, shells);
}

TopoDS_Solid insideOut(const TopoDS_Solid& solid)
{
    return solidOf({shellOf(solid).Reversed()});
}

TopoDS_Shell shellOf(const std::vector<TopoDS_Shape>& faces)
{
    TopoDS_Shell shell;
    BRep_Builder().MakeShell(shell);
    return filled(shell, faces);
}

std::vector<TopoDS_Shape> facesOf(const TopoDS_Shape& shape)
{
    std::vector<TopoDS_Shape> faces;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        faces.push_back(face.Current());
    return faces;
}

TopoDS_Compound together(const std::vector<TopoDS_Shape>& shapes)
{
    TopoDS_Compound all;
    BRep_Builder().MakeCompound(all);
    return filled(all, shapes);
}

TopoDS_Shape moved(const TopoDS_Shape& shape, double x)
{
    gp_Trsf shift;
    shift.SetTranslation(gp_Vec(x, 0, 0));
    return shape.Moved(TopLoc_Location(shift));
}

/// From the surfaces; negative for what is inside out.
double volumeOf(const TopoDS_Shape& shape)
{
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    return properties.Mass();
}

int countOf(const TopoDS_Shape& shape, TopAbs_ShapeEnum type)
{
    TopTools_IndexedMapOfShape known;
    TopExp::MapShapes(shape, type, known);
    return known.Extent();
}

ptx::occt::meshing::ShapeBody healed(const TopoDS_Shape& shape)
{
    ptx::occt::meshing::ShapeBody body;
    body.shape = shape;
    ptx::occt::heal(body, false);
    return body;
}

ptx::occt::meshing::ShapeBody meshed(const TopoDS_Shape& shape)
{
    ptx::occt::meshing::ShapeBody body = healed(shape);
    ptx::occt::meshing::tessellate(body.shape, {Deviation, 0.5}, false);
    return body;
}

/// What OCCT makes of it when it does all by itself.
TopoDS_Shape healedByKernel(const TopoDS_Shape& shape)
{
    ShapeFix_Shape fixer(shape);
    fixer.SetPrecision(1e-4);
    fixer.Perform();
    return fixer.Shape();
}

/// A mesh that says the opposite of the surfaces.
void turnTriangles(const TopoDS_Shape& shape)
{
    for (const TopoDS_Shape& face : facesOf(shape)) {
        TopLoc_Location location;
        const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(TopoDS::Face(face), location);
        for (int i = 1; i <= mesh->NbTriangles(); ++i) {
            const Poly_Triangle old = mesh->Triangle(i);
            mesh->SetTriangle(i, Poly_Triangle(old(1), old(3), old(2)));
        }
    }
}

TEST(SolidOrientationTest, HealingPutsOffTheQuestion)
{
    const ptx::occt::meshing::ShapeBody body = healed(insideOut(box()));
    EXPECT_TRUE(body.mayBeInsideOut);
    EXPECT_NEAR(volumeOf(body.shape), -Volume, 1e-9);
}

TEST(SolidOrientationTest, ASolidThatIsInsideOutIsTurnedByItsMesh)
{
    ptx::occt::meshing::ShapeBody body = meshed(insideOut(box()));
    ptx::occt::orientByMesh(body, Deviation);
    EXPECT_NEAR(volumeOf(body.shape), Volume, 1e-9);
    EXPECT_FALSE(body.mayBeInsideOut);
}

TEST(SolidOrientationTest, ASolidThatIsRightStaysTheSame)
{
    ptx::occt::meshing::ShapeBody body = meshed(box());
    const TopoDS_Shape before = body.shape;
    ptx::occt::orientByMesh(body, Deviation);
    EXPECT_TRUE(body.shape.IsEqual(before));
    EXPECT_NEAR(volumeOf(body.shape), Volume, 1e-9);
}

TEST(SolidOrientationTest, AMeshThatIsFineEnoughIsBelieved)
{
    ptx::occt::meshing::ShapeBody body = meshed(box());
    turnTriangles(body.shape);
    ptx::occt::orientByMesh(body, Deviation);
    EXPECT_NEAR(volumeOf(body.shape), -Volume, 1e-9);
}

/// 24 mm³ within 52 mm² that may be half a millimetre off could be nothing.
TEST(SolidOrientationTest, AMeshThatIsTooCoarseIsNotBelieved)
{
    ptx::occt::meshing::ShapeBody body = meshed(box());
    turnTriangles(body.shape);
    ptx::occt::orientByMesh(body, 0.5);
    EXPECT_NEAR(volumeOf(body.shape), Volume, 1e-9);
}

TEST(SolidOrientationTest, AMeshWithoutOneOfItsFacesIsNotBelieved)
{
    ptx::occt::meshing::ShapeBody body = meshed(box());
    turnTriangles(body.shape);
    BRep_Builder().UpdateFace(TopoDS::Face(facesOf(body.shape)[3]), Handle(Poly_Triangulation)());
    ptx::occt::orientByMesh(body, Deviation);
    EXPECT_NEAR(volumeOf(body.shape), Volume, 1e-9);
}

TEST(SolidOrientationTest, ARayTellsItWithoutAMesh)
{
    ptx::occt::meshing::ShapeBody body = healed(together({insideOut(box()), box(10)}));
    ptx::occt::orientByRay(body);
    EXPECT_NEAR(volumeOf(body.shape), 2 * Volume, 1e-9);
    EXPECT_FALSE(body.mayBeInsideOut);
}

TEST(SolidOrientationTest, WhatWasNotHealedIsLeftAsItIs)
{
    ptx::occt::meshing::ShapeBody body;
    body.shape = insideOut(box());
    ptx::occt::meshing::tessellate(body.shape, {Deviation, 0.5}, false);
    ptx::occt::orientByMesh(body, Deviation);
    EXPECT_NEAR(volumeOf(body.shape), -Volume, 1e-9);
}

TEST(SolidOrientationTest, OneSolidInTwoPlacesIsTurnedInBoth)
{
    const TopoDS_Solid solid = insideOut(box());
    ptx::occt::meshing::ShapeBody body = meshed(together({solid, moved(solid, 50)}));
    ptx::occt::orientByMesh(body, Deviation);
    EXPECT_NEAR(volumeOf(body.shape), 2 * Volume, 1e-6);
    for (TopExp_Explorer item(body.shape, TopAbs_SOLID); item.More(); item.Next())
        EXPECT_NEAR(volumeOf(item.Current()), Volume, 1e-6);
}

TEST(SolidOrientationTest, AppearancesOfFacesStayWithThem)
{
    ptx::occt::meshing::ShapeBody body;
    body.shape = insideOut(box());
    body.marks.Bind(facesOf(body.shape)[2], {7});
    ptx::occt::heal(body, false);
    ptx::occt::meshing::tessellate(body.shape, {Deviation, 0.5}, false);
    ptx::occt::orientByMesh(body, Deviation);
    std::vector<int> seen;
    for (const TopoDS_Shape& face : facesOf(body.shape))
        seen.push_back(body.marks.IsBound(face) ? body.marks.Find(face).appearance : 0);
    EXPECT_EQ(seen, (std::vector<int>{0, 0, 7, 0, 0, 0}));
}

/// The inner shell of a hollow solid is inside out and has to be.
TEST(SolidOrientationTest, AHollowSolidIsTheKernelsBusiness)
{
    const TopoDS_Shape outer = shellOf(BRepPrimAPI_MakeBox(gp_Pnt(-1, -1, -1), gp_Pnt(9, 9, 9)).Shape());
    const ptx::occt::meshing::ShapeBody body = healed(solidOf({outer.Reversed(), shellOf(box())}));
    EXPECT_FALSE(body.mayBeInsideOut);
    EXPECT_NEAR(volumeOf(body.shape), 1000 - Volume, 1e-6);
}

TEST(SolidOrientationTest, AnOpenSolidBecomesAShellAsInTheKernel)
{
    std::vector<TopoDS_Shape> faces = facesOf(box());
    faces.pop_back();
    const TopoDS_Solid open = solidOf({shellOf(faces)});
    const ptx::occt::meshing::ShapeBody body = healed(open);
    EXPECT_EQ(countOf(body.shape, TopAbs_SOLID), countOf(healedByKernel(open), TopAbs_SOLID));
    EXPECT_EQ(countOf(body.shape, TopAbs_SOLID), 0);
    EXPECT_EQ(countOf(body.shape, TopAbs_FACE), 5);
}

TEST(SolidOrientationTest, AShellOfTwoPiecesIsSplitAsInTheKernel)
{
    std::vector<TopoDS_Shape> faces = facesOf(box());
    for (const TopoDS_Shape& face : facesOf(box(10)))
        faces.push_back(face);
    const TopoDS_Solid both = solidOf({shellOf(faces)});
    ptx::occt::meshing::ShapeBody body = meshed(both);
    ptx::occt::orientByMesh(body, Deviation);
    const TopoDS_Shape expected = healedByKernel(both);
    EXPECT_EQ(countOf(body.shape, TopAbs_SOLID), countOf(expected, TopAbs_SOLID));
    EXPECT_EQ(countOf(body.shape, TopAbs_SHELL), countOf(expected, TopAbs_SHELL));
    EXPECT_NEAR(volumeOf(body.shape), 2 * Volume, 1e-6);
}

} // namespace
