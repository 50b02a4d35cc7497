// Several inputs in one run of the real program.

#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::HasSubstr;

namespace
{

std::string boxText(double size)
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {}, {size, 2, 3});
    return step.text();
}

constexpr const char* stl = "solid s\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
                            "endloop\nendfacet\nendsolid s\n";

int runOn(ConvertRun& run, const std::vector<std::string>& arguments)
{
    QStringList words;
    for (const std::string& argument : arguments)
        words << QString::fromStdString(argument);
    return run.run(words);
}

} // namespace

TEST(ConvertSeveral, EachBecomesWhatItBecomesAlone)
{
    ConvertRun run;
    const std::vector<std::string> inputs = {run.folder().write("a ä.stp", boxText(1)),
                                             run.folder().write("b.stp", boxText(5)), run.folder().write("c.stl", stl)};
    std::vector<std::string> arguments{"--set", "tessellation.angle=15", "-o", run.folder().file("out")};
    arguments.insert(arguments.end(), inputs.begin(), inputs.end());
    ASSERT_EQ(runOn(run, arguments), 0) << run.standardError();
    EXPECT_THAT(run.standardOutput(), HasSubstr("3 of 3 files converted\n"));
    for (const char* name : {"a ä", "b", "c"}) {
        const std::string output = run.folder().file("out/" + std::string(name) + ".osb");
        EXPECT_THAT(contentOf(output + ".log"), HasSubstr("set tessellation.angle=15"));
        EXPECT_EQ(contentOf(output + ".tmp"), "100 \nFinished                \n");
        const std::string together = contentOf(output);
        ASSERT_FALSE(together.empty());
        const std::string input = run.folder().file(std::string(name) + (std::string(name) == "c" ? ".stl" : ".stp"));
        ASSERT_EQ(run.convert(input, {"--set", "tessellation.angle=15"}), 0);
        EXPECT_EQ(contentOf(run.output()), together) << name;
    }
}

TEST(ConvertSeveral, ADamagedInputCostsItself)
{
    ConvertRun run;
    const std::string good = run.folder().write("good.stp", boxText(1));
    const std::string bad = run.folder().write("bad.stp", "no STEP text at all");
    EXPECT_EQ(runOn(run, {"-j", "2", "-o", run.folder().file("out"), bad, good}), 7);
    EXPECT_THAT(run.standardOutput(), HasSubstr("1 of 2 files converted\n"));
    EXPECT_THAT(run.standardError(), HasSubstr("ptxconvert: "));
    EXPECT_FALSE(contentOf(run.folder().file("out/good.osb")).empty());
    EXPECT_TRUE(contentOf(run.folder().file("out/bad.osb")).empty());
}

TEST(ConvertSeveral, TwoOfOneNameAreRefusedBeforeAnythingIsDone)
{
    ConvertRun run;
    const std::string input = run.folder().write("a.stp", boxText(1));
    EXPECT_EQ(runOn(run, {input, input, "-o", run.folder().file("out")}), 2);
    EXPECT_THAT(run.standardError(), HasSubstr("would both become"));
    EXPECT_THAT(run.folder().names(), testing::ElementsAre("a.stp"));
}
