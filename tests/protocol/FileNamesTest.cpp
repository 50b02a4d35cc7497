#include "protocol/FileNames.h"

#include <gtest/gtest.h>

using namespace protocol;

TEST(FileNames, AreThoseThatUsersAndOtherConvertersKnow)
{
    EXPECT_STREQ(SceneFileSuffix, ".osb");
    EXPECT_STREQ(ProgressSuffix, ".tmp");
    EXPECT_STREQ(LogSuffix, ".log");
    EXPECT_STREQ(LogErrorMark, "Error: ");
    EXPECT_STREQ(PartMarksSuffix, ".parts");
}

TEST(FileNames, PartMarksAreLetters)
{
    EXPECT_EQ(partmark::Waits, '.');
    EXPECT_EQ(partmark::Started, 's');
    EXPECT_EQ(partmark::Ended, 'e');
}
