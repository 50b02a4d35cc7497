// Saved views of small files.

#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/Tags.h"
#include "scene/ViewTags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/roads/ptxconvert/DraughtingText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::ElementsAre;
using testing::FloatNear;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

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
    EXPECT_THAT(osg::tagsOf(found[0]),
                ElementsAre("stylar::bookmark", "bookmark_group[a (part)]", "ptx::view-aspect=1.2"));
    ASSERT_EQ(found[0]->getNChildren(), 1u);
    EXPECT_THAT(osg::tagsOf(found[0]->getChild(0)), ElementsAre("Front"));
    const osg::UberCameraPtr camera = cameraOf(found[0]);
    ASSERT_TRUE(camera);
    EXPECT_THAT(osg::tagsOf(camera), ElementsAre("ptx::view-aspect=1.2"));
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

TEST(ConvertViews, AViewThatAProgramMadeMayBeKept)
{
    DraughtingText step;
    step.view("* front");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text(), {"--set", "convert.automatic-views=1"}), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), std::vector<std::string>{"* front"});
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
    held.hold({"use"}, true);
    ConvertRun assembly;
    ASSERT_EQ(assembly.convertText("top.stp", held.text()), 0) << assembly.log();
    EXPECT_EQ(names(bookmarks(assembly.scene())), (std::vector<std::string>{"Front", "Of all"}));
}

TEST(ConvertViews, AViewOfAPartInSeveralPlacesIsOneForEach)
{
    DraughtingText step;
    step.draw({step.camera("Front"), step.mappedShape()});
    step.view("Of all");
    step.hold({"first", "a [b]", "first"});
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    const auto found = bookmarks(run.scene());
    ASSERT_EQ(names(found),
              (std::vector<std::string>{"Front (first)", "Front (a (b))", "Front (first) (2)", "Of all"}));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_FLOAT_EQ(cameraOf(found[i])->getMatrix()[12], 115 + 100 * static_cast<float>(i));
    EXPECT_THAT(run.log(), HasSubstr("1 saved views of parts are given for each place of their part"));
    EXPECT_THAT(run.log(), Not(HasSubstr("which has more")));
}

TEST(ConvertViews, OfAPartInVeryManyPlacesTheFirstSixteenHaveItsView)
{
    DraughtingText step;
    step.draw({step.camera("Front"), step.mappedShape()});
    std::vector<std::string> uses;
    for (int i = 1; i <= 17; ++i)
        uses.push_back(std::to_string(i));
    step.hold(uses);
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    const std::vector<std::string> found = names(bookmarks(run.scene()));
    ASSERT_EQ(found.size(), 16u);
    EXPECT_EQ(found.front(), "Front (1)");
    EXPECT_EQ(found.back(), "Front (16)");
    EXPECT_THAT(run.log(), HasSubstr("1 saved views of parts are given for 16 places of their part alone"));
}

TEST(ConvertViews, PlacesThatMultiplyAreSixteenAtTheMostToo)
{
    DraughtingText step;
    step.draw({step.camera("Front"), step.mappedShape()});
    const std::vector<std::string> five = {"a", "b", "c", "d", "e"};
    step.holdTwice(five, five);
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    EXPECT_EQ(bookmarks(run.scene()).size(), 16u);
    EXPECT_THAT(run.log(), HasSubstr("1 saved views of parts are given for 16 places of their part alone"));
}

TEST(ConvertViews, OfAPartInAPartThatIsUsedTwiceEachWayIsAPlace)
{
    DraughtingText step;
    step.draw({step.camera("Front"), step.mappedShape()});
    step.holdTwice({"left", "right"}, {"upper", "lower"});
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    const auto found = bookmarks(run.scene());
    ASSERT_EQ(names(found), (std::vector<std::string>{"Front (upper/left)", "Front (lower/left)", "Front (upper/right)",
                                                      "Front (lower/right)"}));
    // Before the middle of a box of 30, at 100 or 200 of what is turned at 1000 or 2000.
    const float places[][2] = {{1037.4166F, 115}, {2037.4166F, 115}, {1037.4166F, 215}, {2037.4166F, 215}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(cameraOf(found[i])->getMatrix()[12], places[i][0], 1e-3);
        EXPECT_NEAR(cameraOf(found[i])->getMatrix()[13], places[i][1], 1e-3);
    }
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

TEST(ConvertViews, AxesWithoutADirectionAreThoseOfTheSpaceOrNone)
{
    DraughtingText step;
    const int zero = step.add("CARTESIAN_POINT('',(0.,0.,0.))");
    const int none = step.add("DIRECTION('',(0.,0.,0.))");
    const int up = step.add("DIRECTION('',(1.,0.,0.))");
    const auto camera = [&](const char* name, int axis, int reference) {
        const int system =
            step.add("AXIS2_PLACEMENT_3D(''," + ref(zero) + "," + ref(axis) + "," + ref(reference) + ")");
        const int window = step.add("PLANAR_BOX('',60.,50.," + ref(system) + ")");
        const int volume =
            step.add("VIEW_VOLUME(.PARALLEL.," + ref(zero) + ",100.,0.,.F.,0.,.F.,.F.," + ref(window) + ")");
        return step.add("CAMERA_MODEL_D3('" + std::string(name) + "'," + ref(system) + "," + ref(volume) + ")");
    };
    step.draw({camera("No axes", none, none)});
    step.draw({camera("One axis twice", up, up)});
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), std::vector<std::string>{"No axes"});
    EXPECT_THAT(run.log(), HasSubstr("saved view \"One axis twice\" is left out: its camera is incomplete"));
}

TEST(ConvertViews, ViewsThatMapEachOtherAreViewsAllTheSame)
{
    DraughtingText step;
    const int zero = step.add("CARTESIAN_POINT('',(0.,0.,0.))");
    const int origin = step.add("AXIS2_PLACEMENT_3D(''," + ref(zero) + ",$,$)");
    const int first = step.camera("First");
    const int second = step.camera("Second");
    // The numbers of the two drawings are known beforehand: six entities from here on.
    const int start = step.add("REPRESENTATION_MAP(" + ref(origin) + "," + ref(second + 5) + ")");
    ASSERT_EQ(start, second + 1);
    const int toSecond = step.add("MAPPED_ITEM(''," + ref(start) + "," + ref(origin) + ")");
    const int map = step.add("REPRESENTATION_MAP(" + ref(origin) + "," + ref(second + 6) + ")");
    const int toFirst = step.add("MAPPED_ITEM(''," + ref(map) + "," + ref(origin) + ")");
    ASSERT_EQ(step.draw({second, toFirst}), second + 5);
    ASSERT_EQ(step.draw({first, toSecond}), second + 6);
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), (std::vector<std::string>{"First", "Second"}));
}

TEST(ConvertViews, CamerasWithAWordOnHiddenLinesAreViewsToo)
{
    DraughtingText step;
    for (const char* flag : {".T.", ".F."}) {
        DraughtingText same = step;
        same.camera("");
        const std::string text = same.text();
        step.camera(""); // what it needs is there then
        const std::size_t begin = text.rfind("CAMERA_MODEL_D3('',") + std::string("CAMERA_MODEL_D3('',").size();
        const std::string rest = text.substr(begin, text.find(')', begin) - begin);
        step.draw({step.add("CAMERA_MODEL_D3_WITH_HLHSR('\\X2\\00C4\\X0\\ " + std::string(flag) + "'," + rest + "," +
                            flag + ")")});
    }
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const auto found = bookmarks(run.scene());
    ASSERT_EQ(names(found), (std::vector<std::string>{"\u00c4 .T.", "\u00c4 .F."}));
    EXPECT_EQ(cameraOf(found[0])->getHeight(), 50);
    EXPECT_FLOAT_EQ(cameraOf(found[1])->getMatrix()[12], 15);
    EXPECT_FALSE(osg::viewFactsOf(cameraOf(found[0])).areAnnotationsInFront);
    EXPECT_TRUE(osg::viewFactsOf(cameraOf(found[1])).areAnnotationsInFront);
    EXPECT_TRUE(osg::viewFactsOf(found[1]).areAnnotationsInFront);
    EXPECT_THAT(run.log(), HasSubstr("1 saved views show what is hidden: annotations alone are drawn so"));
}

TEST(ConvertViews, SectionPlanesAreTagsOfBookmarkAndCamera)
{
    DraughtingText step, same;
    ASSERT_EQ(step.camera("Cut"), same.camera("Cut"));
    const std::string text = same.text();
    const int point = step.add("CARTESIAN_POINT('',(0.,8.,0.))");
    const int towardsEye = step.add("DIRECTION('',(0.,-1.,0.))");
    const int system = step.add("AXIS2_PLACEMENT_3D(''," + ref(point) + "," + ref(towardsEye) + ",$)");
    const int plane = step.add("PLANE(''," + ref(system) + ")");
    const int both =
        step.add("CAMERA_MODEL_D3_MULTI_CLIPPING_UNION(''," + ("(" + ref(plane) + "," + ref(plane) + ")") + ")");
    const std::size_t parameters = text.find("CAMERA_MODEL_D3('Cut',") + std::string("CAMERA_MODEL_D3('Cut',").size();
    const std::string rest = text.substr(parameters, text.find(')', parameters) - parameters);
    step.draw({step.add("CAMERA_MODEL_D3_MULTI_CLIPPING('Cut'," + rest + ",(" + ref(plane) + "," + ref(both) + "))")});
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), std::vector<std::string>{"Cut"});
    EXPECT_THAT(run.log(), HasSubstr("1 saved views have section planes"));
    EXPECT_THAT(run.log(), HasSubstr("1 sections of saved views cut nothing: they are no single planes"));
    // What is behind the plane stays, and the eye is 45.4166 before it.
    const osg::NodePtr bookmark = bookmarks(run.scene())[0];
    const osg::ViewFacts outside = osg::viewFactsOf(bookmark), inside = osg::viewFactsOf(cameraOf(bookmark));
    ASSERT_EQ(outside.sections.size(), 1u);
    ASSERT_EQ(inside.sections.size(), 1u);
    EXPECT_THAT(outside.sections[0], ElementsAre(0, FloatNear(1, 1e-6F), 0, FloatNear(-8, 1e-3F)));
    EXPECT_THAT(inside.sections[0], ElementsAre(0, 0, FloatNear(-1, 1e-6F), FloatNear(-45.4166F, 1e-3F)));
}
