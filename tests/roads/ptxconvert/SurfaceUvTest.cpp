// Texture coordinates of STEP parts on the whole road: a checker of 10 mm has squares of 10 mm.

#include "tests/roads/ptxconvert/ExactShapes.h"
#include "tests/support/TextureScale.h"

#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRepTools.hxx>

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>

using namespace ptxtest;

namespace
{

const std::vector<std::string> surfaceUv = {"--uv", "surface"};

std::string bytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class SurfaceUvTest : public testing::Test
{
protected:
    /// The mesh of the one geometry of a STEP file of `shape`.
    osg::Mesh converted(const TopoDS_Shape& shape, const std::vector<std::string>& options)
    {
        const std::string path = run.folder().file("solid.stp");
        EXPECT_TRUE(writeStepFile(shape, path));
        EXPECT_EQ(run.convert(path, options), 0) << run.log();
        const std::vector<osg::GeometryPtr> all = geometries(run.scene());
        EXPECT_EQ(all.size(), 1u);
        return all.empty() ? osg::Mesh() : osg::GeometryAccess::mesh(*all.front());
    }

    void expectTrueChecker(const TopoDS_Shape& shape)
    {
        const osg::Mesh mesh = converted(shape, surfaceUv);
        ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
        const std::vector<TextureScale> scales = TextureScale::ofAll(mesh);
        ASSERT_FALSE(scales.empty());
        for (const TextureScale& scale : scales) {
            EXPECT_NEAR(scale.u / 100, 10, 0.2) << "of a square";
            EXPECT_NEAR(scale.v / 100, 10, 0.2) << "of a square";
            EXPECT_NEAR(scale.degrees, 90, 1);
            EXPECT_FALSE(scale.isMirrored);
        }
    }

    /// How long the sides of squares are in the mean over the surface.
    void expectCheckerInTheMean(const TopoDS_Shape& shape, double shareOfU)
    {
        const osg::Mesh mesh = converted(shape, surfaceUv);
        ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
        double u = 0, v = 0, area = 0;
        for (const TextureScale& scale : TextureScale::ofAll(mesh)) {
            u += scale.u / 100 * scale.area;
            v += scale.v / 100 * scale.area;
            area += scale.area;
            EXPECT_FALSE(scale.isMirrored);
        }
        EXPECT_NEAR(v / area, 10, 0.3);
        EXPECT_NEAR(u / area, 10, 10 * shareOfU);
        for (const osg::Vec2f& place : mesh.texCoords) {
            EXPECT_TRUE(std::isfinite(place.x) && std::isfinite(place.y));
        }
    }

    ConvertRun run;
};

} // namespace

TEST_F(SurfaceUvTest, SquaresOnACubeACylinderAndAConeAreSquares)
{
    expectTrueChecker(BRepPrimAPI_MakeBox(40, 40, 40).Shape());
    expectTrueChecker(BRepPrimAPI_MakeCylinder(30, 80).Shape());
    expectTrueChecker(BRepPrimAPI_MakeCone(50, 0, 60).Shape());
    expectTrueChecker(BRepPrimAPI_MakeCone(20, 50, 60).Shape());
}

TEST_F(SurfaceUvTest, OnSpheresToriAndSplinesTheyAreInTheMean)
{
    // A parallel is longer than the mean one by up to pi / 2, and there is more surface where it is.
    expectCheckerInTheMean(BRepPrimAPI_MakeSphere(60).Shape(), 0.25);
    expectCheckerInTheMean(BRepPrimAPI_MakeTorus(80, 20).Shape(), 0.05);
    expectCheckerInTheMean(BRepBuilderAPI_NurbsConvert(BRepPrimAPI_MakeTorus(80, 20).Shape()).Shape(), 0.05);
}

TEST_F(SurfaceUvTest, OfOtherKernelFormatsToo)
{
    const std::string path = run.folder().file("solid.brep");
    ASSERT_TRUE(BRepTools::Write(BRepPrimAPI_MakeCylinder(30, 80).Shape(), path.c_str()));
    ASSERT_EQ(run.convert(path, surfaceUv), 0) << run.log();
    for (const osg::GeometryPtr& geometry : geometries(run.scene()))
        EXPECT_FALSE(osg::GeometryAccess::mesh(*geometry).texCoords.empty());
}

TEST_F(SurfaceUvTest, ShortEdgesHaveThemInTheirMiddles)
{
    std::vector<std::string> options = surfaceUv;
    options.insert(options.end(), {"--set", "tessellation.max-edge-length=7"});
    const osg::Mesh mesh = converted(BRepPrimAPI_MakeBox(40, 40, 40).Shape(), options);
    ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
    EXPECT_GT(mesh.triangles.size() / 3, 100u);
    for (const TextureScale& scale : TextureScale::ofAll(mesh))
        EXPECT_NEAR(scale.u, 1000, 1);
}

TEST_F(SurfaceUvTest, WithoutTheOptionThereAreNone)
{
    EXPECT_TRUE(converted(BRepPrimAPI_MakeCone(50, 0, 60).Shape(), {}).texCoords.empty());
    const std::string path = run.folder().file("solid.stp");
    const std::string without = bytesOf(run.output());
    EXPECT_EQ(run.convert(path, {"--uv", "none"}), 0);
    EXPECT_TRUE(bytesOf(run.output()) == without);
    EXPECT_EQ(run.convert(path, {"--set", "convert.uv=1"}), 0);
    EXPECT_FALSE(bytesOf(run.output()) == without);
    EXPECT_EQ(run.convert(path, {"--uv", "box"}), 2);
}
