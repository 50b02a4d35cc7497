#include "ptx/core/FileBeside.h"

#include "ptx/core/PartMarks.h"
#include "ptx/core/Rescue.h"
#include "tests/roads/ptxconvert/TempFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using ptx::core::FileBeside;
using ptxtest::contentOf;
using ptxtest::TempFolder;

namespace
{

constexpr FileBeside::Content Contents[] = {FileBeside::Content::Kept, FileBeside::Content::Dropped};
constexpr uid_t SomebodyElse = 4711;

std::string refusal(const std::string& path, const char* what)
{
    return "cannot write " + path + ": " + what + " is in the way";
}

} // namespace

TEST(FileBeside, WhatIsNotThereIsMade)
{
    const TempFolder folder;
    const mode_t former = ::umask(0);
    const FileBeside file(folder.file("x"), FileBeside::Content::Kept, 0, 0640);
    ::umask(former);
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(file.trouble(), "");
    struct stat status {
    };
    ASSERT_EQ(::fstat(file.get(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
    EXPECT_EQ(::write(file.get(), "ab", 2), 2);
    EXPECT_EQ(contentOf(folder.file("x")), "ab");
}

TEST(FileBeside, AFileOfTheUserIsTakenWithItsContentOrWithout)
{
    const TempFolder folder;
    folder.write("x", "before");
    EXPECT_TRUE(FileBeside(folder.file("x"), FileBeside::Content::Kept).isOpen());
    EXPECT_EQ(contentOf(folder.file("x")), "before");
    EXPECT_TRUE(FileBeside(folder.file("x"), FileBeside::Content::Dropped).isOpen());
    EXPECT_EQ(contentOf(folder.file("x")), "");
}

TEST(FileBeside, ALinkIsNotFollowedWhereverItLeads)
{
    const TempFolder folder;
    folder.write("other", "keep");
    ::symlink("other", folder.file("x").c_str());
    ::symlink("nowhere", folder.file("y").c_str());
    for (const auto content : Contents)
        for (const char* name : {"x", "y"})
            EXPECT_EQ(FileBeside(folder.file(name), content).trouble(), refusal(folder.file(name), "a link"));
    EXPECT_EQ(contentOf(folder.file("other")), "keep");
    EXPECT_NE(::access(folder.file("nowhere").c_str(), F_OK), 0);
}

TEST(FileBeside, APipeIsNotWaitedFor)
{
    const TempFolder folder;
    ::mkfifo(folder.file("x").c_str(), 0600);
    for (const auto content : Contents)
        EXPECT_EQ(FileBeside(folder.file("x"), content).trouble(), refusal(folder.file("x"), "a pipe"));
}

TEST(FileBeside, AFolderAndADeviceAreInTheWay)
{
    const TempFolder folder;
    ::mkdir(folder.file("x").c_str(), 0700);
    EXPECT_EQ(FileBeside(folder.file("x"), FileBeside::Content::Kept).trouble(), refusal(folder.file("x"), "a folder"));
    EXPECT_EQ(FileBeside("/dev/null", FileBeside::Content::Kept).trouble(),
              refusal("/dev/null", "something that is no file"));
}

TEST(FileBeside, AnotherUsersFileIsNeitherTakenNorEmptied)
{
    const TempFolder folder;
    folder.write("x", "theirs");
    if (::chown(folder.file("x").c_str(), SomebodyElse, SomebodyElse) != 0)
        GTEST_SKIP() << "only root can give files away";
    for (const auto content : Contents)
        EXPECT_EQ(FileBeside(folder.file("x"), content).trouble(), refusal(folder.file("x"), "another user's file"));
    EXPECT_EQ(contentOf(folder.file("x")), "theirs");
}

/// As on file systems that know of one user alone.
TEST(FileBeside, AFileOfWhomTheFolderBelongsToIsTaken)
{
    const TempFolder folder;
    folder.write("x", "theirs");
    if (::chown(folder.file("x").c_str(), SomebodyElse, SomebodyElse) != 0)
        GTEST_SKIP() << "only root can give files away";
    ASSERT_EQ(::chown(folder.path().c_str(), SomebodyElse, SomebodyElse), 0);
    EXPECT_TRUE(FileBeside(folder.file("x"), FileBeside::Content::Kept).isOpen());
}

TEST(FileBeside, AFolderThatIsMissingIsTheReason)
{
    const TempFolder folder;
    EXPECT_EQ(FileBeside(folder.file("none/x"), FileBeside::Content::Kept).trouble(),
              "cannot write " + folder.file("none/x") + ": No such file or directory");
}

TEST(FileBeside, MarksOfPartsAreNotWrittenToSomebodyElsesFile)
{
    const TempFolder folder;
    folder.write("other", "keep");
    ::symlink("other", folder.file("x.parts").c_str());
    {
        ptx::core::Rescue rescue(folder.file("x.parts"), 0);
        EXPECT_EQ(rescue.trouble(), refusal(folder.file("x.parts"), "a link"));
        const auto mark = rescue.workOnPart(1);
        EXPECT_FALSE(rescue.noteCrash());
    }
    EXPECT_EQ(contentOf(folder.file("other")), "keep");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"other", "x.parts"}));
    EXPECT_FALSE(ptx::core::PartMarks(folder.file("x.parts"), "..").isOpen());
}
