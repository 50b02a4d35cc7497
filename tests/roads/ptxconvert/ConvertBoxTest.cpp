// The real program in its box.

#include "host/OSGSystem/Geometry.h"
#include "ptx/box/Box.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <filesystem>

using namespace ptxtest;
using testing::HasSubstr;
using testing::Not;

namespace
{

std::string boxText(const std::string& name)
{
    StepText step;
    StepProduct part = step.product(name);
    step.box(part, {0, 0, 0}, {30, 20, 10});
    return step.text();
}

std::string assemblyOf(const std::string& file)
{
    StepText step;
    const StepProduct top = step.product("top");
    const StepProduct part = step.product("part");
    step.keepIn(part, file);
    step.place(top, part, "part", {5, 0, 0}, {0, 0, 1}, {1, 0, 0});
    return step.text();
}

} // namespace

TEST(ConvertBox, TheLogTellsWhatHolds)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("a.stp", boxText("a")), 0) << run.log();
    if (ptx::box::fileRulesVersion() > 0) {
        EXPECT_THAT(run.log(), HasSubstr("locked in: files (Landlock " + std::to_string(ptx::box::fileRulesVersion()) +
                                         "), system calls\n"));
    }
    EXPECT_EQ(run.convertText("a.stp", boxText("a"), {"--sandbox", "off"}), 0) << run.log();
    EXPECT_THAT(run.log(), HasSubstr("not locked in, as was asked for\n"));
    EXPECT_THAT(run.log(), Not(HasSubstr("locked in: ")));
}

TEST(ConvertBox, AWishThatIsNoneIsWrongUse)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("a.stp", boxText("a"), {"--sandbox", "perhaps"}), 2);
    EXPECT_THAT(run.standardError(), HasSubstr("--sandbox needs on, off or require"));
    EXPECT_EQ(run.convertText("a.stp", boxText("a"), {"--references", "some"}), 2);
    EXPECT_THAT(run.standardError(), HasSubstr("--references needs parts, below or none"));
}

/// What they lie in is found before the box is closed, and what these name in turn.
TEST(ConvertBox, PartsInOtherFoldersComeIn)
{
    ConvertRun run;
    const TempFolder middle;
    const TempFolder leaf;
    leaf.write("leaf.stp", boxText("leaf"));
    middle.write("middle.stp", assemblyOf(leaf.file("leaf.stp")));
    EXPECT_EQ(run.convertText("top.stp", assemblyOf(middle.file("middle.stp"))), 0) << run.log();
    EXPECT_TRUE(nodeNamed(run.scene(), "leaf")) << run.log();
}

TEST(ConvertBox, BelowHoldsPartsBackAndTellsWhy)
{
    ConvertRun run;
    const TempFolder files; // the output's folder is open in any case
    std::filesystem::create_directories(files.file("in"));
    files.write("leaf.stp", boxText("leaf"));
    files.write("in/top.stp", assemblyOf("../leaf.stp"));
    const std::string top = files.file("in/top.stp");
    run.convert(top, {"--references", "below"});
    EXPECT_THAT(run.log(), HasSubstr("leaf.stp of \"part\" is left out: refused, as it does not lie below"));
    EXPECT_EQ(run.convert(top, {"--references", "below", "--references-below", files.file(".")}), 0) << run.log();
    EXPECT_TRUE(nodeNamed(run.scene(), "leaf"));
    EXPECT_EQ(run.convert(top, {"--references", "below", "--allow-references", files.file("")}), 0) << run.log();
    EXPECT_TRUE(nodeNamed(run.scene(), "leaf"));
}

TEST(ConvertBox, NamesReachTheLogAndTheTerminalWithoutControlCharacters)
{
    ConvertRun run;
    const std::string input = run.folder().file("a\x1b]0;owned\x07.stp");
    EXPECT_EQ(run.convert(input), 3);
    EXPECT_THAT(run.standardError(), HasSubstr("a\\x1b]0;owned\\x07.stp"));
    EXPECT_THAT(run.log(), HasSubstr("a\\x1b]0;owned\\x07.stp"));
    EXPECT_THAT(run.standardError() + run.log(), Not(HasSubstr("\x1b")));
}

TEST(ConvertBox, TheVersionTellsWhatTheMachineCan)
{
    ConvertRun run;
    EXPECT_EQ(run.run({QStringLiteral("--version")}), 0);
    EXPECT_THAT(run.standardOutput(), HasSubstr("sandbox: " + ptx::box::abilities() + "\n"));
}

/// In a folder that others write to anybody may have put it there.
TEST(ConvertBox, AForeignFileInThePlaceOfTheLogIsNamed)
{
    ConvertRun run;
    run.folder().write("mine.txt", "keep");
    std::filesystem::create_symlink("mine.txt", run.output() + ".log");
    EXPECT_EQ(run.convertText("a.stp", boxText("a")), 8);
    EXPECT_EQ(run.standardError(), "ptxconvert: cannot write " + run.output() + ".log: a link is in the way\n");
    EXPECT_EQ(contentOf(run.folder().file("mine.txt")), "keep");
    EXPECT_FALSE(std::filesystem::exists(run.output()));
}

TEST(ConvertBox, AForeignFileInThePlaceOfProgressAndMarksCostsTheseAlone)
{
    ConvertRun run;
    run.folder().write("mine.txt", "keep");
    std::filesystem::create_symlink("mine.txt", run.output() + ".tmp");
    ::mkfifo((run.output() + ".parts").c_str(), 0600);
    EXPECT_EQ(run.convertText("a.stp", boxText("a")), 0) << run.log();
    EXPECT_THAT(run.log(), HasSubstr("Warning: cannot write " + run.output() +
                                     ".tmp: a link is in the way; no progress is told\n"));
    EXPECT_THAT(run.log(), HasSubstr("Warning: cannot write " + run.output() +
                                     ".parts: a pipe is in the way; after a crash the conversion would not begin"));
    EXPECT_EQ(contentOf(run.folder().file("mine.txt")), "keep");
    EXPECT_TRUE(std::filesystem::exists(run.output() + ".parts"));
}
