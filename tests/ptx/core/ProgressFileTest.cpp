#include "ptx/core/ProgressFile.h"

#include "tests/roads/ptxconvert/TempFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace ptx::core;
using namespace ptxtest;

TEST(ProgressFile, CreatesAMissingFileWithoutWritingToIt)
{
    const TempFolder folder;
    const ProgressFile file(folder.file("p.tmp"));
    EXPECT_TRUE(file.isOpen());
    EXPECT_EQ(contentOf(folder.file("p.tmp")), "");
}

TEST(ProgressFile, LeavesTheSeedOfAnExistingFileAlone)
{
    const TempFolder folder;
    const std::string path = folder.write("p.tmp", "0\nUnknown\n");
    const ProgressFile file(path);
    EXPECT_EQ(contentOf(path), "0\nUnknown\n");
}

TEST(ProgressFile, EachWriteHasTheSameLengthAndCoversTheOneBefore)
{
    const TempFolder folder;
    const std::string path = folder.write("p.tmp", "0\nUnknown\n");
    ProgressFile file(path);
    file.write(61, Stage::FixSurfaceOrientation);
    EXPECT_EQ(contentOf(path), "61  \nFixSurfaceOrientation   \n");
    file.write(96, Stage::Write);
    EXPECT_EQ(contentOf(path), "96  \nWrite                   \n");
    file.write(100, Stage::Finished);
    EXPECT_EQ(contentOf(path), "100 \nFinished                \n");
}

TEST(ProgressFile, DoesNotWriteTheSameAgain)
{
    const TempFolder folder;
    const std::string path = folder.file("p.tmp");
    ProgressFile file(path);
    file.write(7, Stage::Convert);
    folder.write("p.tmp", "");
    file.write(7, Stage::Convert);
    EXPECT_EQ(contentOf(path), "");
    file.write(8, Stage::Convert);
    EXPECT_EQ(contentOf(path), "8   \nConvert                 \n");
}

TEST(ProgressFile, KeepsTheFileThatWasThereAtTheStart)
{
    const TempFolder folder;
    const std::string path = folder.write("p.tmp", "0\nUnknown\n");
    struct stat before {
    };
    struct stat after {
    };
    ASSERT_EQ(::stat(path.c_str(), &before), 0);
    ProgressFile file(path);
    file.write(3, Stage::ReadAndProcess);
    ASSERT_EQ(::stat(path.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST(ProgressFile, WithoutAFolderItHasNoEffect)
{
    const TempFolder folder;
    ProgressFile file(folder.file("missing/p.tmp"));
    EXPECT_FALSE(file.isOpen());
    file.write(5, Stage::Convert);
    EXPECT_TRUE(folder.names().empty());
}

TEST(ProgressFile, TellsTheNumberInIt)
{
    const TempFolder folder;
    const std::string path = folder.file("p.tmp");
    EXPECT_EQ(ProgressFile(path).percent(), 0);
    ProgressFile(path).write(61, Stage::Convert);
    EXPECT_EQ(ProgressFile(path).percent(), 61);
    EXPECT_EQ(ProgressFile(folder.file("none/p.tmp")).percent(), 0);
}
