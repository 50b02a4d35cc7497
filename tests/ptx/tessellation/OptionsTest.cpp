#include "ptx/tessellation/Options.h"

#include <gmock/gmock.h>

namespace
{

std::string complaintAbout(const std::vector<std::string>& arguments)
{
    const auto options = ptx::tessellation::parseTessellationOptions(arguments);
    return options ? "none" : options.failure().message;
}

TEST(TessellationOptions, TakeNumbersWithDecimalPoints)
{
    const auto options = ptx::tessellation::parseTessellationOptions({"--deviation", "0.25", "in.osb", "--angle", "7.5",
                                                                      "--max-edge-length", "3e1", "--stitch", "0.02",
                                                                      "out.osb", "--set", "threads=3"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options.value().input, "in.osb");
    EXPECT_EQ(options.value().output, "out.osb");
    EXPECT_EQ(options.value().deviation, 0.25);
    EXPECT_EQ(options.value().angle, 7.5);
    EXPECT_EQ(options.value().longestEdge, 30);
    EXPECT_EQ(options.value().stitchTolerance, 0.02);
    EXPECT_EQ(options.value().settings.number(ptx::core::Setting::Threads), 3);
}

TEST(TessellationOptions, AnyEdgeLengthAndNoStitchingAreNoughts)
{
    const auto options =
        ptx::tessellation::parseTessellationOptions({"--max-edge-length", "0", "--stitch", "0", "in", "out"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options.value().longestEdge, 0);
    EXPECT_EQ(options.value().stitchTolerance, 0);
}

TEST(TessellationOptions, EachMistakeIsNamed)
{
    EXPECT_EQ(complaintAbout({"--deviation", "0", "in", "out"}), "--deviation takes a positive number, not \"0\"");
    EXPECT_EQ(complaintAbout({"--angle", "-3", "in", "out"}), "--angle takes a positive number, not \"-3\"");
    EXPECT_EQ(complaintAbout({"--angle", "nan", "in", "out"}), "--angle takes a positive number, not \"nan\"");
    EXPECT_EQ(complaintAbout({"--stitch", "0,5", "in", "out"}), "--stitch takes a positive number, not \"0,5\"");
    EXPECT_EQ(complaintAbout({"--fine", "1", "in", "out"}), "there is no option --fine");
    EXPECT_EQ(complaintAbout({"in", "out", "--angle"}), "--angle needs a value");
    EXPECT_EQ(complaintAbout({"in"}), "an input and an output are needed");
    EXPECT_EQ(complaintAbout({"--set", "speed=9", "in", "out"}), "there is no setting named \"speed\"");
}

} // namespace
