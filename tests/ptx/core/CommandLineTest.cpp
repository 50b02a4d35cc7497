#include "ptx/core/CommandLine.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace ptx::core;

namespace
{

std::string complaint(const std::vector<std::string>& arguments)
{
    const Outcome<CommandLine> line = parseCommandLine(arguments);
    EXPECT_FALSE(line);
    EXPECT_EQ(line.failure().code, ExitCode::WrongUse);
    return line.failure().message;
}

} // namespace

TEST(CommandLine, TakesInputAndOutput)
{
    const Outcome<CommandLine> line = parseCommandLine({"/a/in.stp", "/b/out.osb"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line.value().input, "/a/in.stp");
    EXPECT_EQ(line.value().output, "/b/out.osb");
    EXPECT_FALSE(line.value().externalParts);
}

TEST(CommandLine, MakesPathsAbsolute)
{
    const Outcome<CommandLine> line = parseCommandLine({"x/../in file.stp", "out.osb"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line.value().input, (std::filesystem::current_path() / "in file.stp").string());
}

TEST(CommandLine, TakesOptionsInAnyPlace)
{
    const Outcome<CommandLine> line = parseCommandLine(
        {"--set", "threads=3", "/in.stp", "--external-parts", "/out.osb", "--set", "tessellation.angle=11"});
    ASSERT_TRUE(line);
    EXPECT_TRUE(line.value().externalParts);
    EXPECT_EQ(line.value().settings.number(Setting::Threads), 3);
    EXPECT_EQ(line.value().settings.number(Setting::Angle), 11);
    EXPECT_EQ(line.value().assignments, (std::vector<std::string>{"threads=3", "tessellation.angle=11"}));
}

TEST(CommandLine, TakesPathsThatLookLikeOptionsBehindTwoDashes)
{
    const Outcome<CommandLine> line = parseCommandLine({"--", "--set", "--help"});
    ASSERT_TRUE(line);
    EXPECT_EQ(std::filesystem::path(line.value().input).filename(), "--set");
    EXPECT_EQ(line.value().task, CommandLine::Task::Convert);
}

TEST(CommandLine, TakesWhatFilesMayNameAndWhetherTheRunIsLockedIn)
{
    const Outcome<CommandLine> line =
        parseCommandLine({"--references", "below", "--allow-references", "/a", "--allow-references", "/b/../c",
                          "--sandbox", "require", "/in/a.stp", "/out.osb"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line.value().references.rule, files::references::Rule::Below);
    EXPECT_EQ(line.value().references.folders, (std::vector<std::string>{"/a", "/c"}));
    EXPECT_EQ(line.value().sandbox, Sandbox::Require);
    EXPECT_EQ(line.value().referencePolicy().top, "/in");
    EXPECT_EQ(parseCommandLine({"--references-below", "/top", "/in/a.stp", "/out.osb"}).value().referencePolicy().top,
              "/top");
    const Outcome<CommandLine> plain = parseCommandLine({"/in/a.stp", "/out.osb"});
    EXPECT_EQ(plain.value().references.rule, files::references::Rule::Parts);
    EXPECT_EQ(plain.value().sandbox, Sandbox::On);
    EXPECT_EQ(complaint({"--references", "all", "/a", "/b"}), "--references needs parts, below or none");
    EXPECT_EQ(complaint({"--sandbox"}), "--sandbox needs on, off or require");
    EXPECT_EQ(complaint({"--allow-references", ""}), "--allow-references needs a folder");
    EXPECT_STREQ(word(Sandbox::Require), "require");
    EXPECT_STREQ(word(Sandbox::Off), "off");
}

TEST(CommandLine, TextureCoordinatesAreASettingAsWell)
{
    const Outcome<CommandLine> line = parseCommandLine({"--uv", "surface", "/a", "/b"});
    EXPECT_TRUE(line.value().settings.isOn(Setting::SurfaceUv));
    EXPECT_EQ(line.value().assignments, std::vector<std::string>{"convert.uv=1"}) << "which goes on to many";
    EXPECT_FALSE(parseCommandLine({"/a", "/b"}).value().settings.isOn(Setting::SurfaceUv));
    const Outcome<CommandLine> none = parseCommandLine({"--set", "convert.uv=1", "--uv", "none", "/a", "/b"});
    EXPECT_FALSE(none.value().settings.isOn(Setting::SurfaceUv));
    EXPECT_EQ(complaint({"--uv", "box", "/a", "/b"}), "--uv needs surface or none");
    EXPECT_EQ(complaint({"--uv"}), "--uv needs surface or none");
}

TEST(CommandLine, HelpNeedsNoPaths)
{
    EXPECT_EQ(parseCommandLine({"--help"}).value().task, CommandLine::Task::Help);
    EXPECT_EQ(parseCommandLine({"--version"}).value().task, CommandLine::Task::Version);
    EXPECT_EQ(parseCommandLine({"--help-settings"}).value().task, CommandLine::Task::HelpSettings);
}

TEST(CommandLine, RefusesWhatItDoesNotUnderstand)
{
    EXPECT_EQ(complaint({}), "exactly one INPUT and one OUTPUT are needed");
    EXPECT_EQ(complaint({"/a"}), "exactly one INPUT and one OUTPUT are needed");
    EXPECT_EQ(complaint({"/a", "/b", "/c"}), "exactly one INPUT and one OUTPUT are needed");
    EXPECT_EQ(complaint({"/a", ""}), "exactly one INPUT and one OUTPUT are needed");
    EXPECT_EQ(complaint({"/a", "/x/../a"}), "INPUT and OUTPUT are the same file");
    EXPECT_EQ(complaint({"--fast", "/a", "/b"}), "unknown option --fast");
    EXPECT_EQ(complaint({"/a", "/b", "--set"}), "--set needs name=value");
    EXPECT_EQ(complaint({"/a", "/b", "--set", "speed=9"}), "there is no setting named \"speed\"");
}

TEST(CommandLine, TakesSeveralInputsWithAFolder)
{
    const Outcome<CommandLine> line =
        parseCommandLine({"/a.stp", "-o", "/out", "-j", "3", "/x/../b.jt", "--", "-c.stl"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line.value().task, CommandLine::Task::ConvertSeveral);
    EXPECT_EQ(line.value().folder, "/out");
    EXPECT_EQ(line.value().jobs, 3u);
    ASSERT_EQ(line.value().inputs.size(), 3u);
    EXPECT_EQ(line.value().inputs[0], "/a.stp");
    EXPECT_EQ(line.value().inputs[1], "/b.jt");
    EXPECT_TRUE(line.value().inputs[2].ends_with("/-c.stl"));
    EXPECT_EQ(parseCommandLine({"/a", "-o", "/out"}).value().jobs, 0u);
}

TEST(CommandLine, RefusesSeveralInputsThatAreNotWhole)
{
    EXPECT_EQ(complaint({"-o", "/out"}), "at least one INPUT is needed with -o");
    EXPECT_EQ(complaint({"-o", "/out", "/a", ""}), "at least one INPUT is needed with -o");
    EXPECT_EQ(complaint({"/a", "-o"}), "-o needs a folder");
    EXPECT_EQ(complaint({"/a", "-o", ""}), "-o needs a folder");
    EXPECT_EQ(complaint({"/a", "/b", "-j", "2"}), "-j needs -o");
    for (const char* count : {"0", "1025", "two", "2x", "-1", ""})
        EXPECT_EQ(complaint({"/a", "-o", "/out", "-j", count}), "-j needs a number from 1 to 1024") << count;
}

TEST(CommandLine, TheNextAttemptIsAskedForBesideWhatWasAskedFor)
{
    const std::vector<std::string> first = {"--set", "threads=1", "/a", "/b"};
    const std::vector<std::string> second = commandOfAttempt(1, 77, first);
    EXPECT_EQ(second, (std::vector<std::string>{"ptxconvert", "--again", "1", "77", "--set", "threads=1", "/a", "/b"}));
    const std::vector<std::string> arguments(second.begin() + 1, second.end());
    EXPECT_EQ(commandOfAttempt(2, 77, arguments),
              (std::vector<std::string>{"ptxconvert", "--again", "2", "77", "--set", "threads=1", "/a", "/b"}));
    const Outcome<CommandLine> line = parseCommandLine(arguments);
    ASSERT_TRUE(line);
    EXPECT_EQ(line.value().attempt, 1);
    EXPECT_EQ(line.value().begun, 77);
    EXPECT_EQ(line.value().input, "/a");
    EXPECT_EQ(complaint({"/a", "/b", "--again", "1"}), "--again needs two numbers");
}
