#include "host/znUtils/znMessage.h"

#include <gmock/gmock.h>

#include <typeinfo>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

TEST(Message, HoldsACodeAndItsFirstAttribute)
{
    const znMessage message(0x20000, "filename", boost::any(std::string("a.csb")));
    EXPECT_EQ(message.getCode(), 0x20000u);
    std::string value;
    EXPECT_TRUE(message.get("filename", value));
    EXPECT_EQ(value, "a.csb");
}

TEST(Message, HasNoAttributesAtFirst)
{
    const znMessage message;
    EXPECT_EQ(message.getCode(), 0u);
    EXPECT_TRUE(message.get("filename").empty());
}

TEST(Message, ReplacesAValueOnlyWhenAskedTo)
{
    znMessage message;
    message.set("count", boost::any(3), false);
    message.set("count", boost::any(4), false);
    EXPECT_EQ(boost::any_cast<int>(message.get("count")), 3);
    message.set("count", boost::any(5), true);
    EXPECT_EQ(boost::any_cast<int>(message.get("count")), 5);
}

TEST(Message, TypedGetIsSilentAboutAnAbsentAttribute)
{
    testing::internal::CaptureStderr();
    int value = 7;
    EXPECT_FALSE(znMessage().get("missing", value));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(value, 7);
}

TEST(Message, TypedGetTellsBothTypesAndTheWayToTheCallOnAMismatch)
{
    const znMessage message(0, "material", boost::any(3));
    testing::internal::CaptureStderr();
    double value = 7.5;
    EXPECT_FALSE(message.get("material", value));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, StartsWith("znMessage::get : Attribute 'material' has wrong type (is:'i' != req:'d')!\n"));
    EXPECT_THAT(said, HasSubstr("zn_utils_test"));
    EXPECT_EQ(value, 7.5);
}

TEST(Message, TypedGetTakesAnEmptyValueForVoid)
{
    const znMessage message(0, "material", boost::any());
    testing::internal::CaptureStderr();
    int value = 7;
    EXPECT_FALSE(message.get("material", value));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                StartsWith("znMessage::get : Attribute 'material' has wrong type (is:'v' != req:'i')!\n"));
    EXPECT_STREQ(typeid(void).name(), "v");
    EXPECT_EQ(value, 7);
}

TEST(Message, ABacktraceNamesAFrameALine)
{
    testing::internal::CaptureStderr();
    znMessage::printBT();
    const std::string trace = testing::internal::GetCapturedStderr();
    EXPECT_GT(std::count(trace.begin(), trace.end(), '\n'), 3);
    EXPECT_THAT(trace, HasSubstr("zn_utils_test"));
    EXPECT_THAT(trace, HasSubstr("[0x"));
}

} // namespace
