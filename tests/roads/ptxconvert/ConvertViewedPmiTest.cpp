// What saved views of small files show of annotations.

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

/// Two views, each with a callout of its own, and one callout that both show.
class TwoViews : public DraughtingText
{
public:
    TwoViews()
    {
        const int both = callout("Both");
        m_cameras = {camera("One [1]"), camera("Two")};
        m_callouts = {callout("First"), callout("Second")};
        draw({m_cameras[0], m_callouts[0], both, mappedShape()});
        draw({m_cameras[1], m_callouts[1], both, mappedShape()});
        draw({m_callouts[0], m_callouts[1], both}); // the whole, which is no view
    }

    int camera(std::size_t number) const { return m_cameras[number]; }
    int callout(std::size_t number) const { return m_callouts[number]; }
    using DraughtingText::callout;
    using DraughtingText::camera;

private:
    std::vector<int> m_cameras;
    std::vector<int> m_callouts;
};

std::vector<std::string> tagsOfNode(ConvertRun& run, const char* name)
{
    return osg::tagsOf(nodeNamed(run.scene(), name));
}

} // namespace

TEST(ConvertViewedPmi, EachViewShowsTheCalloutsOfItsDrawing)
{
    TwoViews step;
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(tagsOfNode(run, "PMI"),
                ElementsAre("ptx::pmi", Marker, "bookmark[One (1)]:visible", "bookmark[Two]:visible"));
    EXPECT_THAT(tagsOfNode(run, "First"), ElementsAre(Marker, "bookmark[One (1)]:visible", "bookmark[Two]:hidden"));
    EXPECT_THAT(tagsOfNode(run, "Second"), ElementsAre(Marker, "bookmark[One (1)]:hidden", "bookmark[Two]:visible"));
    EXPECT_THAT(tagsOfNode(run, "Both"), IsEmpty());
    EXPECT_FALSE(nodeNamed(run.scene(), "PMI")->isActive());
    EXPECT_TRUE(nodeNamed(run.scene(), "First")->isActive());
}

TEST(ConvertViewedPmi, AViewWithoutAnnotationsHidesThemAll)
{
    TwoViews step;
    step.view("Bare");
    step.callout("In no view");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(tagsOfNode(run, "PMI"), Contains("bookmark[Bare]:hidden"));
    EXPECT_THAT(tagsOfNode(run, "In no view"),
                ElementsAre(Marker, "bookmark[One (1)]:hidden", "bookmark[Two]:hidden", "bookmark[Bare]:hidden"));
}

TEST(ConvertViewedPmi, TheFileOpensAsItsDefaultViewSays)
{
    TwoViews step;
    step.add("DEFAULT_MODEL_GEOMETRIC_VIEW('',$," + ref(step.camera(std::size_t{1})) + ",$,$)");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_TRUE(nodeNamed(run.scene(), "PMI")->isActive());
    EXPECT_FALSE(nodeNamed(run.scene(), "First")->isActive());
    EXPECT_TRUE(nodeNamed(run.scene(), "Second")->isActive());
    EXPECT_TRUE(nodeNamed(run.scene(), "Both")->isActive());
}

TEST(ConvertViewedPmi, WhatWasHiddenTellsTheDefaultView)
{
    TwoViews step;
    step.add("INVISIBILITY((" + ref(step.callout(std::size_t{1})) + "))");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_TRUE(nodeNamed(run.scene(), "PMI")->isActive());
    EXPECT_TRUE(nodeNamed(run.scene(), "First")->isActive());
    EXPECT_FALSE(nodeNamed(run.scene(), "Second")->isActive());
}

TEST(ConvertViewedPmi, WhereNoViewIsTheDefaultAllIsHidden)
{
    TwoViews step;
    for (const std::size_t number : {0u, 1u})
        step.add("INVISIBILITY((" + ref(step.callout(number)) + "))");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_FALSE(nodeNamed(run.scene(), "PMI")->isActive());
}

TEST(ConvertViewedPmi, ViewsOfOneNameAndCameraShowWhatEitherShows)
{
    DraughtingText step;
    step.draw({step.camera("View"), step.callout("First")});
    step.draw({step.camera("View"), step.callout("Second")});
    step.view("Other");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(tagsOfNode(run, "PMI"),
                ElementsAre("ptx::pmi", Marker, "bookmark[View]:visible", "bookmark[Other]:hidden"));
    EXPECT_THAT(tagsOfNode(run, "First"), IsEmpty());
    EXPECT_THAT(tagsOfNode(run, "Second"), IsEmpty());
}

TEST(ConvertViewedPmi, WhatIsOnAPlaneIsSeenWithIt)
{
    DraughtingText step;
    const int written = step.callout("Written");
    const int surface = step.add("PLANE('',$)");
    const int plane = step.add("ANNOTATION_PLANE('',()," + ref(surface) + ",(" + ref(written) + "))");
    step.draw({step.camera("View"), plane});
    step.draw({step.camera("Other"), step.callout("Else")});
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(tagsOfNode(run, "Written"), Contains("bookmark[View]:visible"));
    EXPECT_THAT(tagsOfNode(run, "Else"), Contains("bookmark[View]:hidden"));
}

TEST(ConvertViewedPmi, WithoutAnnotationsThereIsNothingToSwitch)
{
    TwoViews step;
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text(), {"--set", "convert.pmi=0"}), 0) << run.log();
    EXPECT_FALSE(nodeNamed(run.scene(), "PMI"));
    EXPECT_THAT(tagsOfNode(run, "part"), Not(Contains(HasSubstr("bookmark"))));
}
