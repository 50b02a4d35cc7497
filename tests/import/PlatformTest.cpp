#include "import/Platform.h"

#include <gtest/gtest.h>

#if !defined(_WIN32)

TEST(Platform, PathsThatBeginAtARootAreNotRelative)
{
    for (const char* path : {"/", "/models/a.jt", "\\\\server\\a.jt", "C:\\a.jt", "c:/a.jt", "z:"})
        EXPECT_EQ(PathIsRelativeA(path), 0) << path;
    for (const char* path : {"", "a.jt", "./a.jt", "../a.jt", "models/a.jt", "1:/a.jt", " /a.jt", "~/a.jt"})
        EXPECT_NE(PathIsRelativeA(path), 0) << path;
}

TEST(Platform, TheFileNameStandsBehindTheLastSeparator)
{
    const char* path = "/models/sub dir/a.jt";
    EXPECT_EQ(PathFindFileNameA(path), path + 16);
    EXPECT_STREQ(PathFindFileNameA("C:\\models/x\\b.jt"), "b.jt");
    EXPECT_STREQ(PathFindFileNameA("/a"), "a");
    EXPECT_STREQ(PathFindFileNameA("a.jt"), "a.jt");
    EXPECT_STREQ(PathFindFileNameA(""), "");
}

TEST(Platform, ASeparatorAtTheEndBelongsToTheName)
{
    EXPECT_STREQ(PathFindFileNameA("/models/sub/"), "sub/");
    EXPECT_STREQ(PathFindFileNameA("models//"), "models//");
}

#endif
