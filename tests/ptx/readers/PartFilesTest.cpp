#include "ptx/readers/PartFiles.h"
#include "tests/roads/ptxconvert/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace ptx::readers;
using ptxtest::TempFolder;

TEST(PartFileFinder, ExactNameIsPreferredToOneInAnotherCase)
{
    TempFolder folder;
    folder.write("PART.stp", "x");
    const std::string exact = folder.write("part.stp", "x");
    EXPECT_EQ(PartFileFinder().find(folder.path(), "part.stp"), exact);
    EXPECT_EQ(PartFileFinder().find(folder.path(), "Part.stp"), folder.file("PART.stp"));
}

TEST(PartFileFinder, MissingFileIsExpectedWhereItsNameSays)
{
    TempFolder folder;
    EXPECT_EQ(PartFileFinder().find(folder.path(), "sub\\..\\sub\\gone.stp"), folder.file("sub/gone.stp"));
    EXPECT_EQ(PartFileFinder().find(folder.path(), "/nowhere/at/all/gone.stp"), folder.file("gone.stp"));
    EXPECT_EQ(PartFileFinder().find(folder.path(), "D:\\work\\gone.stp"), folder.file("gone.stp"));
}

TEST(PartFileFinder, LinksLeadToOnePath)
{
    TempFolder folder;
    const std::string part = folder.write("part.stp", "x");
    std::filesystem::create_symlink(part, folder.file("link.stp"));
    EXPECT_EQ(canonicalPath(folder.file("link.stp")), part);
    EXPECT_EQ(canonicalPath(folder.file("gone.stp")), folder.file("gone.stp"));
}

TEST(PartFileFinder, OfSeveralNamesInOtherLettersTheFirstByItsBytesIsTaken)
{
    TempFolder folder;
    for (const char* name : {"pArt.stp", "PART.stp", "Part.stp", "parT.stp"})
        folder.write(name, "x");
    EXPECT_EQ(PartFileFinder().find(folder.path(), "part.STP"), folder.file("PART.stp"));
}

TEST(PartFileFinder, FoldersOnTheWayMayBeInOtherLettersToo)
{
    TempFolder folder;
    std::filesystem::create_directories(folder.file("Größe/B"));
    const std::string part = folder.write("Größe/B/part.stp", "x");
    PartFileFinder finder;
    EXPECT_EQ(finder.find(folder.path(), "GRÖßE\\b\\Part.stp"), part);
    EXPECT_EQ(finder.find(folder.file("Größe"), "b/PART.STP"), part);
}

/// The folder of an assembly may hold as many files as it has parts: it is listed once for all of their names.
TEST(PartFileFinder, WhatComesAfterTheListingIsFoundUnderItsVeryName)
{
    TempFolder folder;
    const std::string first = folder.write("first.stp", "x");
    PartFileFinder finder;
    EXPECT_EQ(finder.find(folder.path(), "FIRST.stp"), first);
    const std::string second = folder.write("second.stp", "x");
    EXPECT_EQ(finder.find(folder.path(), "second.stp"), second);
    EXPECT_EQ(finder.find(folder.path(), "SECOND.stp"), folder.file("SECOND.stp"));
}

TEST(PartFileFinder, NobodyLooksWhereAPolicyForbidsIt)
{
    const TempFolder top;
    const TempFolder other;
    other.write("part.stp", "x");
    const std::string beside = top.write("beside.stp", "x");
    files::references::Policy policy;
    policy.rule = files::references::Rule::Below;
    policy.top = top.path();
    PartFileFinder finder(policy);
    const std::string refused = finder.find(top.path(), other.file("part.stp"));
    EXPECT_EQ(refused, other.file("part.stp"));
    EXPECT_EQ(finder.refusal(refused), files::references::sentence(files::references::Refusal::DocumentOutside));
    EXPECT_EQ(finder.find(top.path(), other.file("PART.STP")), other.file("PART.STP")) << "nor in other letters";
    EXPECT_EQ(finder.find(top.path(), other.file("beside.stp")), beside) << "the name alone, beside the file";
    EXPECT_EQ(finder.refusal(beside), std::nullopt);
    EXPECT_EQ(PartFileFinder().refusal(other.file("part.stp")), std::nullopt);
}
