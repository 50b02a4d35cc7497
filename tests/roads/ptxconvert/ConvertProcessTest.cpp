#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

using namespace ptxtest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

std::string boxText()
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {}, {1, 2, 3});
    return step.text();
}

} // namespace

TEST(ConvertProcess, LeavesOutputProgressAndLogAndNothingElse)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", boxText()), 0);
    EXPECT_THAT(run.folder().names(), ElementsAre("box.stp", "out.osb", "out.osb.log", "out.osb.tmp"));
    EXPECT_EQ(run.progress(), "100 \nFinished                \n");
    EXPECT_EQ(run.standardOutput(), "");
    EXPECT_EQ(run.standardError(), "");
}

TEST(ConvertProcess, LogTellsVersionsPathsAndCounts)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", boxText(), {"--set", "tessellation.angle=15"}), 0);
    EXPECT_THAT(run.log(), HasSubstr("ptxconvert "));
    EXPECT_THAT(run.log(), HasSubstr("CAD kernel 7."));
    EXPECT_THAT(run.log(), HasSubstr("input  " + run.folder().file("box.stp")));
    EXPECT_THAT(run.log(), HasSubstr("set tessellation.angle=15"));
    EXPECT_THAT(run.log(), HasSubstr("1 distinct parts, 6 faces (0 without mesh), 12 triangles"));
}

TEST(ConvertProcess, PathsWithEveryKindOfLetterArriveUnchanged)
{
    ConvertRun run;
    const std::string name = "a b'c\"d$HOME;e\xC3\xA4\xE9\xBD\xBF&(1).stp";
    ASSERT_EQ(run.convertText(name, boxText()), 0) << run.log();
    EXPECT_EQ(nameOf(run.scene()), name);
}

TEST(ConvertProcess, PathsArriveUnchangedUnderTheCLocale)
{
    ConvertRun run;
    const QByteArray before = qgetenv("LC_ALL");
    qputenv("LC_ALL", "C");
    const std::string input = run.folder().write("\xE9\xBD\xBF.stp", boxText());
    const int code = run.convert(input);
    qputenv("LC_ALL", before);
    ASSERT_EQ(code, 0) << run.log();
    EXPECT_EQ(nameOf(run.scene()), "\xE9\xBD\xBF.stp");
}

TEST(ConvertProcess, KeepsTheProgressFileThatItsParentSeeded)
{
    ConvertRun run;
    const std::string path = run.folder().write("out.osb.tmp", "0\nUnknown\n");
    struct stat before {
    };
    struct stat after {
    };
    ASSERT_EQ(::stat(path.c_str(), &before), 0);
    ASSERT_EQ(run.convertText("box.stp", boxText()), 0);
    ASSERT_EQ(::stat(path.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(run.progress(), "100 \nFinished                \n");
}

TEST(ConvertProcess, WrongUseEndsWith2AndTellsTheUsage)
{
    ConvertRun run;
    EXPECT_EQ(run.run({QStringLiteral("--fast")}), 2);
    EXPECT_THAT(run.standardError(), HasSubstr("unknown option --fast"));
    EXPECT_THAT(run.standardError(), HasSubstr("Usage: ptxconvert"));
}

TEST(ConvertProcess, HelpVersionAndSettingsGoToStandardOutput)
{
    ConvertRun run;
    EXPECT_EQ(run.run({QStringLiteral("--help")}), 0);
    EXPECT_THAT(run.standardOutput(), HasSubstr("Usage: ptxconvert"));
    EXPECT_EQ(run.run({QStringLiteral("--version")}), 0);
    EXPECT_THAT(run.standardOutput(), HasSubstr("Open CASCADE 7."));
    EXPECT_EQ(run.run({QStringLiteral("--help-settings")}), 0);
    EXPECT_THAT(run.standardOutput(), HasSubstr("tessellation.angle=20 degree"));
}

TEST(ConvertProcess, MissingInputEndsWith3)
{
    ConvertRun run;
    const std::string path = run.folder().file("missing.stp");
    EXPECT_EQ(run.convert(path), 3);
    EXPECT_THAT(run.log(), HasSubstr("Error: cannot read " + path + ": there is no such file"));
    EXPECT_THAT(run.standardError(), HasSubstr("there is no such file"));
    EXPECT_THAT(run.folder().names(), ElementsAre("out.osb.log", "out.osb.tmp"));
}

TEST(ConvertProcess, FolderAsInputEndsWith3)
{
    ConvertRun run;
    EXPECT_EQ(run.convert(run.folder().path()), 3);
    EXPECT_THAT(run.log(), HasSubstr("it is not a file"));
}

TEST(ConvertProcess, FormatWithoutReaderEndsWith6AndIsNamed)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("part.sldprt", "whatever"), 6);
    EXPECT_THAT(run.log(), HasSubstr("Error: this build has no reader for SolidWorks files (.sldprt)"));
    EXPECT_EQ(run.convertText("part.prt", "whatever"), 6);
    EXPECT_THAT(run.log(), HasSubstr("Error: this build has no reader for NX or ProEngineer files (.prt)"));
    EXPECT_EQ(run.convertText("notes.txt", "whatever"), 6);
    EXPECT_THAT(run.log(), HasSubstr("Error: this build has no reader for files with the extension \"txt\""));
}

TEST(ConvertProcess, ContentThatBeliesTheExtensionEndsWith7AndSaysWhatItIs)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("box.stp", "once upon a time"), 7);
    EXPECT_THAT(run.log(), HasSubstr("Error: the file is named as STEP (.stp), but its content is not"));
    EXPECT_EQ(run.convertText("box.sldprt", boxText()), 6);
    EXPECT_THAT(run.log(), HasSubstr("its content is STEP, so a name that ends in .stp would help"));
}

TEST(ConvertProcess, EmptyInputEndsWith7)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("box.stp", ""), 7);
    EXPECT_THAT(run.log(), HasSubstr("Error: the file is empty"));
}

TEST(ConvertProcess, StepWithoutGeometryEndsWith25)
{
    ConvertRun run;
    StepText step;
    step.product("nothing");
    EXPECT_EQ(run.convertText("nothing.stp", step.text()), 25);
    EXPECT_THAT(run.log(), HasSubstr("Error: the file is a STEP file, but"));
    EXPECT_FALSE(std::filesystem::exists(run.output()));
}

TEST(ConvertProcess, OutputFolderThatIsMissingEndsWith8)
{
    ConvertRun run;
    const std::string input = run.folder().write("box.stp", boxText());
    EXPECT_EQ(run.run({QString::fromStdString(input), QString::fromStdString(run.folder().file("none/out.osb"))}), 8);
    EXPECT_THAT(run.standardError(), HasSubstr("cannot write"));
}

TEST(ConvertProcess, OutputThatIsAFolderEndsWith8)
{
    ConvertRun run;
    std::filesystem::create_directory(run.output());
    EXPECT_EQ(run.convertText("box.stp", boxText()), 8);
    EXPECT_THAT(run.log(), HasSubstr("it is a folder"));
}

TEST(ConvertProcess, FailedRunLeavesTheOutputOfTheRunBefore)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", boxText()), 0);
    const std::string before = contentOf(run.output());
    EXPECT_EQ(run.convertText("box.stp", "ISO-10303-21; and then nothing"), 7);
    EXPECT_EQ(contentOf(run.output()), before);
}

TEST(ConvertProcess, AnOutputOfBeforeKeepsItsPermissionsAndLeavesNothingBesideTheNewOne)
{
    ConvertRun run;
    run.folder().write("out.osb", "of before");
    ASSERT_EQ(::chmod(run.output().c_str(), 0640), 0);
    ASSERT_EQ(run.convertText("box.stp", boxText()), 0);
    struct stat status {
    };
    ASSERT_EQ(::stat(run.output().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0640u);
    EXPECT_NE(contentOf(run.output()), "of before");
    EXPECT_THAT(run.folder().names(), ElementsAre("box.stp", "out.osb", "out.osb.log", "out.osb.tmp"));
}

/// A link stays one, and a file that is read by the same run is there to be read.
TEST(ConvertProcess, AnOutputBehindALinkAndOneThatIsTheInputAreReplacedInTheirPlaces)
{
    ConvertRun run;
    const std::string target = run.folder().write("behind", "of before");
    ASSERT_EQ(::symlink(target.c_str(), run.output().c_str()), 0);
    ASSERT_EQ(run.convertText("box.stp", boxText()), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(run.output()));
    EXPECT_NE(contentOf(target), "of before");
    const std::string box = run.folder().file("box.stp");
    const std::string link = run.folder().file("link.osb");
    ASSERT_EQ(::symlink(box.c_str(), link.c_str()), 0);
    EXPECT_EQ(run.run({QString::fromStdString(box), QString::fromStdString(link)}), 0);
    EXPECT_EQ(contentOf(box).substr(0, 4), contentOf(target).substr(0, 4));
}

/// What a killed run has left aside.
TEST(ConvertProcess, AnOutputThatAKilledRunHasLeftAsideComesBackWithTheNextFailure)
{
    ConvertRun run;
    run.folder().write("out.osb", "of before");
    ASSERT_EQ(run.convertText("bad.stp", "ISO-10303-21; and then nothing"), 7);
    const std::vector<std::string> calm = run.folder().names();
    const std::string aside = run.folder().file(".zn-6662a1a7841cd3cd.former");
    std::filesystem::rename(run.output(), aside);
    ASSERT_EQ(run.convertText("bad.stp", "ISO-10303-21; and then nothing"), 7);
    EXPECT_EQ(contentOf(run.output()), "of before");
    EXPECT_EQ(run.folder().names(), calm);
}

TEST(ConvertProcess, NodeLimitEndsWith10AndSaysHowToRaiseIt)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("box.stp", boxText(), {"--set", "limit.nodes=1"}), 10);
    EXPECT_THAT(run.log(), HasSubstr("limit.nodes"));
    EXPECT_THAT(run.folder().names(), ElementsAre("box.stp", "out.osb.log", "out.osb.tmp"));
}
