#include "scene/Mesh.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/IgesText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::Contains;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace
{

void expectBox(const Measures& measures, osg::Vec3f low, osg::Vec3f high)
{
    EXPECT_NEAR(measures.low.x, low.x, 1e-4);
    EXPECT_NEAR(measures.low.y, low.y, 1e-4);
    EXPECT_NEAR(measures.low.z, low.z, 1e-4);
    EXPECT_NEAR(measures.high.x, high.x, 1e-4);
    EXPECT_NEAR(measures.high.y, high.y, 1e-4);
    EXPECT_NEAR(measures.high.z, high.z, 1e-4);
}

/// Two patches that meet at an edge, one red and one blue.
IgesText roof()
{
    IgesText iges;
    iges.patch({0, 0, 0}, {10, 0, 0}, {0, 5, 2}, {10, 5, 2}, 2);
    iges.patch({0, 5, 2}, {10, 5, 2}, {0, 10, 0}, {10, 10, 0}, 4);
    return iges;
}

const char TwoSolids[] = "solid left\nfacet normal 0 0 1\nouter loop\nvertex 1 2 3\nvertex 5 2 3\nvertex 1 6 3\n"
                         "endloop\nendfacet\nendsolid left\nsolid right\nfacet normal 0 0 1\nouter loop\n"
                         "vertex 11 2 3\nvertex 15 2 3\nvertex 11 6 3\nendloop\nendfacet\nendsolid right\n";

} // namespace

TEST(ConvertIges, LooseFacesBecomeOnePartAndAreSewn)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("roof.igs", roof().text()), 0) << run.log();
    EXPECT_THAT(run.log(), HasSubstr("2 loose surfaces and curves become one part"));
    EXPECT_THAT(run.log(), HasSubstr("part \"roof\": stitched, free edges 8 -> 6"));
    const osg::NodePtr root = run.scene();
    ASSERT_EQ(root->getNChildren(), 1u);
    EXPECT_EQ(nameOf(root->getChild(0)), "roof");
    expectBox(measure(root), {0, 0, 0}, {10, 10, 2});
}

TEST(ConvertIges, ColoursStayWithTheirFaces)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("roof.iges", roof().text()), 0) << run.log();
    std::vector<osg::Color3f> seen;
    for (const osg::GeometryPtr& geometry : geometries(run.scene()))
        seen.push_back(lookOf(geometry).diffuse);
    EXPECT_THAT(seen, UnorderedElementsAre(osg::Color3f{1, 0, 0}, osg::Color3f{0, 0, 1}));
}

TEST(ConvertIges, InchesBecomeMillimetres)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("roof.igs", roof().text(true)), 0) << run.log();
    expectBox(measure(run.scene()), {0, 0, 0}, {254, 254, 50.8f});
}

TEST(ConvertIges, StitchingCanBeSwitchedOff)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("roof.igs", roof().text(), {"--set", "stitch=0"}), 0) << run.log();
    EXPECT_THAT(run.log(), testing::Not(HasSubstr("stitched")));
}

TEST(ConvertStl, SolidsOfATextStayApart)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("two.stl", TwoSolids), 0) << run.log();
    const osg::NodePtr root = run.scene();
    ASSERT_EQ(root->getNChildren(), 2u);
    expectBox(measure(nodeNamed(root, "left")), {1, 2, 3}, {5, 6, 3});
    expectBox(measure(nodeNamed(root, "right")), {11, 2, 3}, {15, 6, 3});
}

TEST(ConvertStl, UnitIsASetting)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("two.stl", TwoSolids, {"--set", "mesh.unit=25.4"}), 0) << run.log();
    expectBox(measure(run.scene()), {25.4f, 50.8f, 76.2f}, {381, 152.4f, 76.2f});
}

TEST(ConvertStl, WithoutTrianglesEndsWith25)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("none.stl", "solid none\nendsolid none\n"), 25);
    EXPECT_THAT(run.log(), HasSubstr("Error: the file is an STL file without triangles"));
}

TEST(ConvertStl, DamageIsTold)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("bad.stl", "solid x\nfacet normal 0 0 1\nouter loop\nvertex 1 2 x\n"), 7);
    EXPECT_THAT(run.log(), HasSubstr("Error: line 4 of the STL text: expected \"a number\", found \"x\""));
    EXPECT_EQ(run.convertText("bad.stl", std::string(84, 'b')), 7);
    EXPECT_THAT(run.log(), HasSubstr("Error: the binary STL file is cut off"));
}

TEST(ConvertStl, OtherContentUnderTheNameIsTold)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("roof.stl", roof().text()), 7);
    EXPECT_THAT(run.log(),
                HasSubstr("Error: the file is named as STL (.stl), but its content is IGES: rename it to end "
                          "in .igs"));
}

TEST(ConvertAll, RootTellsTheFormat)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("two.stl", TwoSolids), 0);
    EXPECT_THAT(osg::tagsOf(run.scene()), Contains("ptx::format=STL"));
    ASSERT_EQ(run.convertText("roof.igs", roof().text()), 0);
    EXPECT_THAT(osg::tagsOf(run.scene()), Contains("ptx::format=IGES"));
}
