#include "scene/Attributes.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ExactShapes.h"

#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Solid.hxx>

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <numbers>
#include <optional>

using namespace ptxtest;
using std::numbers::pi;

namespace
{

// Fine enough for each share below to be met by a mesh without error, coarse enough for one with a face too few to
// miss.
const std::vector<std::string> Fine = {"--set", "tessellation.relative-deviation=0.0002", "--set",
                                       "tessellation.angle=5"};
constexpr double Share = 0.005;

void expectNear(const osg::Vec3f& seen, const osg::Vec3f& wanted, double tolerance)
{
    EXPECT_NEAR(seen.x, wanted.x, tolerance);
    EXPECT_NEAR(seen.y, wanted.y, tolerance);
    EXPECT_NEAR(seen.z, wanted.z, tolerance);
}

void expectSolid(const TopoDS_Shape& shape, double volume, double area, osg::Vec3f low, osg::Vec3f high)
{
    ConvertRun run;
    const std::string path = run.folder().file("solid.stp");
    ASSERT_TRUE(writeStepFile(shape, path));
    ASSERT_EQ(run.convert(path, Fine), 0) << run.log();
    const Measures measures = measure(run.scene());
    EXPECT_NEAR(measures.volume, volume, Share * volume);
    EXPECT_NEAR(measures.area, area, Share * area);
    const double tolerance = 0.0005 * std::hypot(high.x - low.x, high.y - low.y, high.z - low.z);
    expectNear(measures.low, low, tolerance);
    expectNear(measures.high, high, tolerance);
}

std::optional<std::string> corpusFile(const std::string& name)
{
    const char* corpus = std::getenv("ZN_CORPUS");
    const auto path = std::filesystem::path(corpus ? corpus : "") / "step" / name;
    std::error_code missing;
    return corpus && std::filesystem::exists(path, missing) ? std::optional(path.string()) : std::nullopt;
}

/// The number that `node` has under `name`, nothing when it has none or several.
std::optional<double> valueOf(const osg::NodePtr& node, const std::string& name)
{
    std::vector<double> values;
    for (const osg::Attribute& attribute : osg::attributesOf(osg::AttachmentContainerPtr(node)))
        if (attribute.name == name)
            values.push_back(std::get<double>(attribute.value));
    return values.size() == 1 ? std::optional(values[0]) : std::nullopt;
}

/// Compares what each node carries with what hangs there. @return how many values there were
int checkValidation(const osg::NodePtr& node)
{
    int count = 0;
    const Measures measures = measure(node);
    if (const auto volume = valueOf(node, "Validation volume")) {
        EXPECT_NEAR(measures.volume, *volume, Share * *volume) << nameOf(node);
        ++count;
    }
    if (const auto area = valueOf(node, "Validation area")) {
        EXPECT_NEAR(measures.area, *area, Share * *area) << nameOf(node);
        ++count;
    }
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        count += checkValidation(node->getChild(i));
    return count;
}

class ExactCorpus : public testing::TestWithParam<const char*>
{
};

class ValidatedCorpus : public testing::TestWithParam<const char*>
{
};

} // namespace

TEST(Exactness, Cylinder)
{
    expectSolid(BRepPrimAPI_MakeCylinder(7, 20), pi * 49 * 20, 2 * pi * 7 * (7 + 20), {-7, -7, 0}, {7, 7, 20});
}

TEST(Exactness, Sphere)
{
    expectSolid(BRepPrimAPI_MakeSphere(9), 4.0 / 3 * pi * 729, 4 * pi * 81, {-9, -9, -9}, {9, 9, 9});
}

TEST(Exactness, Torus)
{
    expectSolid(BRepPrimAPI_MakeTorus(20, 4), 2 * pi * pi * 20 * 16, 4 * pi * pi * 20 * 4, {-24, -24, -4}, {24, 24, 4});
}

TEST(Exactness, ConeWithATip)
{
    expectSolid(BRepPrimAPI_MakeCone(6, 0, 8), pi * 36 * 8 / 3, pi * 6 * (6 + 10), {-6, -6, 0}, {6, 6, 8});
}

TEST(Exactness, ASolidThatTheFileHoldsInsideOutIsTurned)
{
    const TopoDS_Shape cylinder = BRepPrimAPI_MakeCylinder(7, 20).Shape();
    TopoDS_Solid solid;
    BRep_Builder().MakeSolid(solid);
    BRep_Builder().Add(solid, TopExp_Explorer(cylinder, TopAbs_SHELL).Current().Reversed());
    expectSolid(solid, pi * 49 * 20, 2 * pi * 7 * (7 + 20), {-7, -7, 0}, {7, 7, 20});
}

TEST_P(ExactCorpus, BoxAreaAndVolumeAgreeWithTheSurfaces)
{
    const auto path = corpusFile(GetParam());
    if (!path)
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam() << " in it";
    const TopoDS_Shape shape = shapeOfStepFile(*path);
    ASSERT_FALSE(shape.IsNull());
    const ExactMeasures exact = exactMeasures(shape);
    ConvertRun run;
    ASSERT_EQ(run.convert(*path, Fine), 0) << run.log();
    const Measures measures = measure(run.scene());
    EXPECT_NEAR(measures.area, exact.area, Share * exact.area);
    expectNear(measures.low, exact.low, 0.001 * exact.diagonal);
    expectNear(measures.high, exact.high, 0.001 * exact.diagonal);
    if (exact.isSolid) {
        EXPECT_NEAR(measures.volume, exact.volume, Share * exact.volume);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, ExactCorpus,
                         testing::Values("as1-oc-214.stp", "as1_pe_203.stp", "base_interface_AP203.STEP",
                                         "cube_hole.step", "eight_cyl.stp", "extref-s1-c5-214/s1-c5-214.stp",
                                         "extref-s1-tu-203/s1-tu-203.stp", "linkrods.step", "ManyBodies.stp",
                                         "nist_ctc_01_asme1_ap203.stp", "nist_ctc_02_asme1_ap203.stp",
                                         "nist_ctc_03_asme1_ap203.stp", "red_cube_blue_cylinder.step", "screw.step",
                                         "torus.stp"));

TEST_P(ValidatedCorpus, AreaAndVolumeAgreeWithWhatTheFileSays)
{
    const auto path = corpusFile(GetParam());
    if (!path)
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam() << " in it";
    ConvertRun run;
    ASSERT_EQ(run.convert(*path, Fine), 0) << run.log();
    const osg::NodePtr root = run.scene();
    ASSERT_TRUE(root);
    EXPECT_GT(checkValidation(root), 0);
}

INSTANTIATE_TEST_SUITE_P(Files, ValidatedCorpus,
                         testing::Values("as1-oc-214.stp", "dm1-id-214.stp", "io1-tu-203.stp", "sg1-c5-214.stp"));
