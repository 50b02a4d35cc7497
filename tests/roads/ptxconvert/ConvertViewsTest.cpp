// Saved views of small files.

#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/roads/ptxconvert/DraughtingText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::ElementsAre;
using testing::FloatNear;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

std::vector<osg::NodePtr> bookmarks(const osg::NodePtr& root)
{
    std::vector<osg::NodePtr> found;
    for (unsigned i = 0; root && i < root->getNChildren(); ++i)
        if (!osg::tagsOf(root->getChild(i)).empty() && osg::tagsOf(root->getChild(i))[0] == "stylar::bookmark")
            found.push_back(root->getChild(i));
    return found;
}

std::vector<std::string> names(const std::vector<osg::NodePtr>& nodes)
{
    std::vector<std::string> result;
    for (const osg::NodePtr& node : nodes)
        result.push_back(nameOf(node));
    return result;
}

osg::UberCameraPtr cameraOf(const osg::NodePtr& bookmark)
{
    return osg::fcCast<osg::UberCamera>(bookmark->getChild(0)->getCore());
}

} // namespace

TEST(ConvertViews, AViewIsABookmarkWithItsCamera)
{
    DraughtingText step(LengthUnit::Millimetre, "a [part]");
    step.view("Front");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const auto found = bookmarks(run.scene());
    ASSERT_EQ(names(found), std::vector<std::string>{"Front"});
    EXPECT_THAT(osg::tagsOf(found[0]), ElementsAre("stylar::bookmark", "bookmark_group[a (part)]"));
    ASSERT_EQ(found[0]->getNChildren(), 1u);
    EXPECT_THAT(osg::tagsOf(found[0]->getChild(0)), ElementsAre("Front"));
    const osg::UberCameraPtr camera = cameraOf(found[0]);
    ASSERT_TRUE(camera);
    EXPECT_EQ(camera->getProjection(), osg::UberCamera::Parallel);
    EXPECT_EQ(camera->getHeight(), 50);
    EXPECT_THAT(camera->getMatrix().values,
                ElementsAre(1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 15, FloatNear(-37.4166F, 1e-3F), 5, 1));
}

TEST(ConvertViews, CamerasAreInTheUnitOfTheirDrawing)
{
    DraughtingText step(LengthUnit::Inch);
    step.view("Front");
    step.view("Near", ".CENTRAL.");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const auto found = bookmarks(run.scene());
    ASSERT_EQ(names(found), (std::vector<std::string>{"Front", "Near"}));
    EXPECT_FLOAT_EQ(cameraOf(found[0])->getHeight(), 1270);
    EXPECT_FLOAT_EQ(cameraOf(found[0])->getMatrix()[12], 381);
    EXPECT_EQ(cameraOf(found[1])->getProjection(), osg::UberCamera::Perspective);
    EXPECT_NEAR(cameraOf(found[1])->getFieldOfView(), 28.0725, 1e-3);
    EXPECT_FLOAT_EQ(cameraOf(found[1])->getMatrix()[13], -2540);
}

TEST(ConvertViews, NamesAreUniqueAndSafe)
{
    DraughtingText step;
    step.view("A[1]");
    step.view("A[1]");
    step.view("A[1]", ".CENTRAL.");
    step.view("");
    step.view("* front");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), (std::vector<std::string>{"A(1)", "A(1) (2)", "View 3"}));
    EXPECT_THAT(run.log(), HasSubstr("3 saved views"));
    EXPECT_THAT(run.log(), HasSubstr("1 views that a program made by itself are left out"));
}

TEST(ConvertViews, CamerasThatNothingDrawsAreNoViews)
{
    DraughtingText step;
    step.camera("Origin of something");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(bookmarks(run.scene()), IsEmpty());
}

TEST(ConvertViews, ViewsOfAPartCountWhereItIsTheWhole)
{
    DraughtingText alone;
    alone.draw({alone.camera("Front"), alone.mappedShape()});
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", alone.text()), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), std::vector<std::string>{"Front"});
    DraughtingText held;
    held.draw({held.camera("Front"), held.mappedShape()});
    held.view("Of all");
    held.hold({"use"});
    ConvertRun assembly;
    ASSERT_EQ(assembly.convertText("top.stp", held.text()), 0) << assembly.log();
    EXPECT_EQ(names(bookmarks(assembly.scene())), std::vector<std::string>{"Of all"});
    EXPECT_THAT(assembly.log(), HasSubstr("1 saved views of parts within the assembly are left out"));
}

TEST(ConvertViews, CamerasThatAreBrokenAreLeftOutWithAWord)
{
    DraughtingText step;
    step.draw({step.add("CAMERA_MODEL_D3('Hollow',$,$)")});
    step.view("Far", ".PARALLEL.", "1.E300");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(bookmarks(run.scene()), IsEmpty());
    EXPECT_THAT(run.log(), HasSubstr("saved view \"Hollow\" is left out: its camera is incomplete"));
}
