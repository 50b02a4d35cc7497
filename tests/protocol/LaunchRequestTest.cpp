#include "protocol/LaunchRequest.h"

#include <gtest/gtest.h>

using protocol::decodedLaunch;
using protocol::encoded;
using protocol::LaunchRequest;

TEST(LaunchRequest, ComesBackAsItWas)
{
    const auto back = decodedLaunch(encoded({"/a b/ö", {"--set", "", "x=y z"}, {"HOME=/root", "EMPTY="}}));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->folder, "/a b/ö");
    EXPECT_EQ(back->arguments, (std::vector<std::string>{"--set", "", "x=y z"}));
    EXPECT_EQ(back->environment, (std::vector<std::string>{"HOME=/root", "EMPTY="}));
}

TEST(LaunchRequest, NothingButAFolderIsOne)
{
    const auto back = decodedLaunch(encoded({"/", {}, {}}));
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->arguments.empty());
    EXPECT_TRUE(back->environment.empty());
}

TEST(LaunchRequest, OtherBytesAreNone)
{
    const auto isNone = [](std::string_view bytes) { return !decodedLaunch(bytes); };
    EXPECT_TRUE(isNone(""));
    EXPECT_TRUE(isNone({"0\0", 2})) << "no folder";
    EXPECT_TRUE(isNone({"0\0/", 3})) << "no end";
    EXPECT_TRUE(isNone({"\0/\0", 3})) << "no number";
    EXPECT_TRUE(isNone({"-1\0/\0", 5}));
    EXPECT_TRUE(isNone({"2\0/\0a\0", 6})) << "fewer arguments";
    EXPECT_TRUE(isNone({"99999999999999999999\0/\0", 23}));
    EXPECT_TRUE(decodedLaunch({"1\0/\0a\0", 6}));
}
