// Saved views of real files against a table of what their cameras say.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <optional>

using namespace ptxtest;

namespace
{

/// A view as its file has it: lengths in millimetres, rounded as they are here.
struct Row {
    std::string name;
    std::optional<osg::Vec3f> eye; ///< anywhere on the line of sight; nothing where the file has it in another unit
    osg::Vec3f direction, up;
    float window = 0;         ///< height; 0 where the file has it in another unit
    std::size_t callouts = 0; ///< drawn ones that it shows
    float fieldOfView = 0;    ///< of a perspective, in degrees; 0 for a parallel view
};

struct File {
    std::string path;
    std::vector<Row> views;

    friend std::ostream& operator<<(std::ostream& stream, const File& file) { return stream << file.path; }
};

const std::vector<File> Files = {
    {"step/nist_ctc_01_asme1_ap242-e1.stp",
     {{"MBD_0", {{963, -975, 917}}, {-.59F, .57F, -.58F}, {-.42F, .40F, .82F}, 790, 23}}},
    {"step/nist_ctc_03_asme1_ap242-e2.stp",
     {{"MBD_0", {{-682, 1016, 1045}}, {.46F, -.57F, -.68F}, {-.89F, -.27F, -.38F}, 647, 29}}},
    {"step/nist_ctc_05_asme1_ap242-e1.stp",
     {{"MBD_A", {{878, 796, 999}}, {-.57F, -.50F, -.65F}, {-.32F, .86F, -.39F}, 518, 13},
      {"MBD_B", {{-745, 487, -904}}, {.58F, -.40F, .71F}, {.24F, .92F, .32F}, 444, 10}}},
    {"step/nist_ftc_06_asme1_ap242-e2.stp",
     {{"MBD_A", {{780, 682, -616}}, {-.58F, -.58F, .58F}, {-.41F, .82F, .41F}, 530, 32},
      {"MBD_B", {{-600, 652, 478}}, {.58F, -.58F, -.58F}, {.41F, .82F, -.41F}, 471, 13},
      {"MBD_C", {{14, 673, -730}}, {0, -.70F, .72F}, {0, .72F, .70F}, 428, 22}}},
    {"step/nist_stc_08_asme1_ap242-e3.stp",
     {{"MBD_A", {{330, 533, -440}}, {-.58F, -.58F, .58F}, {-.41F, -.41F, -.82F}, 436, 15},
      {"MBD_B", {{397, -476, 506}}, {-.58F, .58F, -.58F}, {-.41F, .41F, .82F}, 379, 16},
      {"MBD_C", {{513, -488, 489}}, {-.58F, .58F, -.58F}, {-.41F, .41F, .82F}, 373, 5},
      {"MBD_D", {{570, 511, 531}}, {-.58F, -.58F, -.58F}, {-.41F, -.41F, .82F}, 402, 8}}},
    {"step/nist_stc_06_asme1_ap242-e3.stp",
     {{"Back", {{124, 268, 46}}, {0, -1, 0}, {0, 0, 1}, 248},
      {"Bottom", {{124, 0, -346}}, {0, 0, 1}, {0, -1, 0}, 305},
      {"Front", {{124, -268, 46}}, {0, 1, 0}, {0, 0, 1}, 248},
      {"Isometric", {{410, -286, 333}}, {-.58F, .58F, -.58F}, {-.41F, .41F, .82F}, 391},
      {"Left", {{-198, 0, 46}}, {1, 0, 0}, {0, 0, 1}, 305},
      {"MBD_A", {{568, -616, 499}}, {-.61F, .65F, -.45F}, {-.36F, .28F, .89F}, 659, 23},
      {"MBD_B", {{-282, 504, 479}}, {.55F, -.63F, -.56F}, {.40F, -.39F, .83F}, 549, 11},
      {"MBD_C", {{536, -20, 471}}, {-.75F, -.01F, -.66F}, {-.66F, 0, .75F}, 503, 8},
      {"Right", {{446, 0, 46}}, {-1, 0, 0}, {0, 0, 1}, 305},
      {"Top", {{124, 0, 439}}, {0, 0, -1}, {0, 1, 0}, 305},
      {"Trimetric", {{453, -268, 218}}, {-.72F, .59F, -.38F}, {-.29F, .24F, .93F}, 393},
      {"MBD_A(Work)", {{916, -880, 619}}, {-.61F, .65F, -.45F}, {-.36F, .28F, .89F}, 457, 23}}},
    // Its cameras are in metres, and the drawings that they are in say millimetres.
    {"step-views/nist_ctc_02_asme1_ap242-2015.stp",
     {{"Top", {}, {0, 0, -1}, {0, 1, 0}, 0},
      {"Front", {}, {0, 1, 0}, {0, 0, 1}, 0},
      {"Right", {}, {-1, 0, 0}, {0, 0, 1}, 0},
      {"Back", {}, {0, -1, 0}, {0, 0, 1}, 0},
      {"Bottom", {}, {0, 0, 1}, {0, -1, 0}, 0},
      {"Left", {}, {1, 0, 0}, {0, 0, 1}, 0},
      {"Isometric", {}, {-.58F, .58F, -.58F}, {-.41F, .41F, .82F}, 0},
      {"Trimetric", {}, {-.72F, .59F, -.38F}, {-.29F, .24F, .93F}, 0},
      {"MBD_A", {}, {-.72F, .56F, .42F}, {-.34F, .25F, -.91F}, 0, 14},
      {"MBD_B", {}, {.54F, -.64F, .55F}, {.31F, -.46F, -.83F}, 0, 16},
      {"MBD_C", {}, {-.58F, .39F, -.72F}, {-.25F, -.92F, -.30F}, 0, 24}}},
    // 60 mm at a distance of 100 mm.
    {"step-views/own-box-triangulated-faces.stp",
     {{"Front", {{15, -100, 5}}, {0, 1, 0}, {0, 0, 1}, 50},
      {"Corner (far)", {{75, -54, 53}}, {-.60F, .64F, -.48F}, {-.33F, .35F, .88F}, 0, 0, 33.40F}}},
    {"step/nist_ctc_01_asme1_ap203.stp", {}},
    {"step/no_sign.stp", {}},
};

osg::UberCameraPtr cameraOf(const osg::NodePtr& root, const std::string& name)
{
    for (const osg::NodePtr& node : nodesNamed(root, name))
        if (const auto camera = osg::fcCast<osg::UberCamera>(node->getCore()))
            return camera;
    return {};
}

osg::Vec3f column(const osg::UberCameraPtr& camera, unsigned number, float factor = 1)
{
    const auto& values = camera->getMatrix().values;
    return {values[number * 4] * factor, values[number * 4 + 1] * factor, values[number * 4 + 2] * factor};
}

float distance(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

/// How far `point` is from the line through `start` along the unit vector `direction`.
float distanceToLine(const osg::Vec3f& point, const osg::Vec3f& start, const osg::Vec3f& direction)
{
    const osg::Vec3f way = {point.x - start.x, point.y - start.y, point.z - start.z};
    const float along = way.x * direction.x + way.y * direction.y + way.z * direction.z;
    return distance(way, {direction.x * along, direction.y * along, direction.z * along});
}

bool hasTag(const osg::NodePtr& node, const std::string& tag)
{
    const std::vector<std::string>& tags = osg::tagsOf(node);
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

/// How many callouts the view `name` shows, by the tags of the tree at `root`.
std::size_t calloutsOf(const osg::NodePtr& root, const std::string& name)
{
    std::size_t count = 0;
    for (const osg::NodePtr& pmi : nodesNamed(root, "PMI"))
        for (unsigned i = 0; i < pmi->getNChildren() && hasTag(pmi, "bookmark[" + name + "]:visible"); ++i)
            count += hasTag(pmi->getChild(i), "bookmark[" + name + "]:hidden") ? 0 : 1;
    return count;
}

std::vector<std::string> bookmarksOf(const osg::NodePtr& root)
{
    std::vector<std::string> names;
    for (unsigned i = 0; i < root->getNChildren(); ++i)
        if (hasTag(root->getChild(i), "stylar::bookmark"))
            names.push_back(nameOf(root->getChild(i)));
    return names;
}

class SavedViewsCorpus : public testing::TestWithParam<File>
{
};

} // namespace

TEST_P(SavedViewsCorpus, CamerasAreThoseOfTheFile)
{
    const char* corpus = std::getenv("ZN_CORPUS");
    const std::filesystem::path path = std::filesystem::path(corpus ? corpus : "") / GetParam().path;
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << GetParam().path << " in it";
    ConvertRun run;
    ASSERT_EQ(run.convert(path.string()), 0) << run.log();
    std::vector<std::string> names;
    for (const Row& row : GetParam().views)
        names.push_back(row.name);
    EXPECT_EQ(bookmarksOf(run.scene()), names);
    for (const Row& row : GetParam().views) {
        SCOPED_TRACE(row.name);
        const osg::UberCameraPtr camera = cameraOf(run.scene(), row.name);
        ASSERT_TRUE(camera);
        constexpr float AsRounded = 0.012F;
        EXPECT_LT(distance(column(camera, 2, -1), row.direction), AsRounded);
        EXPECT_LT(distance(column(camera, 1), row.up), AsRounded);
        EXPECT_EQ(camera->getProjection(),
                  row.fieldOfView > 0 ? osg::UberCamera::Perspective : osg::UberCamera::Parallel);
        if (row.fieldOfView > 0) {
            EXPECT_NEAR(camera->getFieldOfView(), row.fieldOfView, 0.01);
        }
        if (row.eye) {
            EXPECT_LT(distanceToLine(*row.eye, column(camera, 3), column(camera, 2)), 1.5F);
        }
        if (row.window > 0) {
            EXPECT_NEAR(camera->getHeight(), row.window, 0.51);
        }
        EXPECT_EQ(calloutsOf(run.scene(), row.name), row.callouts);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, SavedViewsCorpus, testing::ValuesIn(Files));
