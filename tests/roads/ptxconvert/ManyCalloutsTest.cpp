// Annotations in numbers that no drawing has.

#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/roads/ptxconvert/DraughtingText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::HasSubstr;

namespace
{

/// `count` callouts of a line each, which `step` shows in one view.
void addCallouts(DraughtingText& step, std::size_t count)
{
    const int from = step.add("CARTESIAN_POINT('',(0.,0.,0.))");
    const int to = step.add("CARTESIAN_POINT('',(30.,0.,20.))");
    const int line = step.add("POLYLINE('',(" + ref(from) + "," + ref(to) + "))");
    const int set = step.add("GEOMETRIC_CURVE_SET('note',(" + ref(line) + "))");
    std::vector<int> shown = {step.camera("Front"), step.mappedShape()};
    for (std::size_t i = 0; i < count; ++i) {
        const int occurrence = step.add("ANNOTATION_CURVE_OCCURRENCE('',()," + ref(set) + ")");
        shown.push_back(step.add("DRAUGHTING_CALLOUT('',(" + ref(occurrence) + "))"));
    }
    step.draw(shown);
}

} // namespace

TEST(ManyCallouts, AMillionComeInWithinTimeAndMemory)
{
    constexpr std::size_t Count = 1'000'000;
    DraughtingText step;
    addCallouts(step, Count);
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text(),
                              {"--set", "limit.memory=4000", "--set", "limit.memory-per-mb=0", "--set",
                               "limit.time=240", "--set", "limit.time-per-mb=0"}),
              0)
        << run.log();
    EXPECT_THAT(run.log(), HasSubstr("1000000 annotations in 1000000 callouts: 1000000 polylines of 2000000 points"));
    const osg::NodePtr pmi = nodeNamed(run.scene(), "PMI");
    ASSERT_TRUE(pmi);
    EXPECT_EQ(pmi->getNChildren(), Count);
}

TEST(ManyCallouts, ThatInstancesMultiplyAreRefusedWithASentence)
{
    DraughtingText step;
    addCallouts(step, 100'000);
    step.hold(std::vector<std::string>(60, "use"));
    ConvertRun run;
    EXPECT_EQ(run.convertText("top.stp", step.text()), 10) << run.log();
    EXPECT_THAT(run.log(),
                HasSubstr("Error: the instances of the file multiply to more nodes than limit.nodes allows"));
}
