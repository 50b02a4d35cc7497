// What saved views of small files show of shapes.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/Mesh.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/roads/ptxconvert/DraughtingText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

constexpr char Marker[] = "stylar::bookmark_visibilities";

/// The geometry below `root` whose first position is at `least` or right of it; null when there is none.
osg::NodePtr geometryFrom(const osg::NodePtr& root, float least)
{
    if (const auto geometry = osg::fcCast<osg::Geometry>(root->getCore()))
        return osg::GeometryAccess::mesh(*geometry).positions[0].x >= least ? root : osg::NodePtr();
    for (unsigned i = 0; i < root->getNChildren(); ++i)
        if (const osg::NodePtr found = geometryFrom(root->getChild(i), least))
            return found;
    return {};
}

} // namespace

TEST(ConvertViewedShapes, AViewWithItemsOfItsOwnShowsTheseAlone)
{
    DraughtingText step;
    const int left = step.solid(), right = step.secondBox();
    step.draw({step.camera("All"), step.mappedShape()});
    step.draw({step.camera("Left"), step.mappedItems({left})});
    step.draw({step.camera("Both"), step.mappedItems({right, left})});
    step.view("No word");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    ASSERT_TRUE(geometryFrom(run.scene(), 35));
    EXPECT_THAT(osg::tagsOf(geometryFrom(run.scene(), 35)),
                ElementsAre(Marker, "bookmark[All]:visible", "bookmark[Left]:hidden", "bookmark[Both]:visible",
                            "bookmark[No word]:visible"));
    EXPECT_THAT(osg::tagsOf(geometryFrom(run.scene(), 0)), IsEmpty());
    EXPECT_TRUE(geometryFrom(run.scene(), 35)->isActive());
    EXPECT_THAT(run.log(), HasSubstr("2 saved views show some of the shapes alone"));
}

TEST(ConvertViewedShapes, TheViewAtOpeningHidesWhatItDoesNotShow)
{
    DraughtingText step;
    const int left = step.solid();
    step.secondBox();
    const int camera = step.camera("Left");
    const int drawing = step.draw({camera, step.mappedItems({left})});
    step.add("DEFAULT_MODEL_GEOMETRIC_VIEW('',$," + ref(camera) + "," + ref(drawing) + ",$,.F.)");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    ASSERT_TRUE(geometryFrom(run.scene(), 35));
    EXPECT_THAT(osg::tagsOf(geometryFrom(run.scene(), 35)), ElementsAre(Marker, "bookmark[Left]:hidden"));
    EXPECT_FALSE(geometryFrom(run.scene(), 35)->isActive());
    EXPECT_TRUE(geometryFrom(run.scene(), 0)->isActive());
}

TEST(ConvertViewedShapes, WhereEachViewShowsAllNothingIsTold)
{
    DraughtingText step;
    const int zero = step.add("CARTESIAN_POINT('',(0.,0.,0.))");
    step.draw({step.camera("Whole"), step.mappedShape()});
    step.draw({step.camera("Aids"), step.mappedItems({zero})});
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(osg::tagsOf(geometryFrom(run.scene(), 0)), IsEmpty());
    EXPECT_THAT(run.log(), Not(HasSubstr("alone")));
}

TEST(ConvertViewedShapes, AViewOfAPartStandsWhereThePartDoesAndShowsItAlone)
{
    DraughtingText step;
    step.draw({step.camera("Of the part"), step.mappedShape()});
    step.view("Of all");
    step.hold({"use"}, true);
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    const osg::NodePtr view = nodeNamed(run.scene(), "Of the part");
    ASSERT_TRUE(view);
    const auto camera = osg::fcCast<osg::UberCamera>(view->getChild(0)->getCore());
    EXPECT_FLOAT_EQ(camera->getMatrix()[12], 115);
    EXPECT_FLOAT_EQ(camera->getMatrix()[14], 5);
    EXPECT_EQ(camera->getHeight(), 50);
    EXPECT_THAT(osg::tagsOf(geometryFrom(nodeNamed(run.scene(), "use"), 0)), IsEmpty());
    EXPECT_THAT(osg::tagsOf(geometryFrom(nodeNamed(run.scene(), "beside"), 0)),
                ElementsAre(Marker, "bookmark[Of the part]:hidden", "bookmark[Of all]:visible"));
}

TEST(ConvertViewedShapes, ViewsOfAPartInSeveralPlacesShowAllOfTheseAlone)
{
    DraughtingText step;
    step.draw({step.camera("Front"), step.mappedShape()});
    step.hold({"first", "second"}, true);
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    for (const char* use : {"first", "second"})
        EXPECT_THAT(osg::tagsOf(geometryFrom(nodeNamed(run.scene(), use), 0)), IsEmpty());
    EXPECT_THAT(osg::tagsOf(geometryFrom(nodeNamed(run.scene(), "beside"), 0)),
                ElementsAre(Marker, "bookmark[Front (first)]:hidden", "bookmark[Front (second)]:hidden"));
}

TEST(ConvertViewedShapes, OfSeveralPartsInAnAssemblyNobodyKnowsThePlaceOfTheirView)
{
    DraughtingText step;
    step.draw({step.camera("Of the part"), step.mappedItems({step.solid()})});
    step.hold({"use"}, true);
    step.draw({step.camera("Of both"), step.mappedShape(), step.mappedOther()});
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    EXPECT_TRUE(nodeNamed(run.scene(), "Of the part"));
    EXPECT_FALSE(nodeNamed(run.scene(), "Of both"));
    EXPECT_THAT(run.log(), HasSubstr("1 saved views of several parts within the assembly are left out"));
    EXPECT_THAT(osg::tagsOf(nodeNamed(run.scene(), "top")),
                Contains("ptx::left-out=1 saved views of several parts\n" + run.folder().file("top.stp")));
}
