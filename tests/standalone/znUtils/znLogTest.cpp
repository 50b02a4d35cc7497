#include "host/znUtils/znLog.h"

#include "standalone/znUtils/LogSink.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace
{

TEST(Log, ErrorsGoToStandardErrorByThemselves)
{
    testing::internal::CaptureStderr();
    znLog::error("Couldn't open 'Gehäuse.plmxml'!");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Couldn't open 'Gehäuse.plmxml'!\n");
}

TEST(Log, ASinkTakesTheErrorsUntilItIsTakenAway)
{
    std::vector<std::string> heard;
    testing::internal::CaptureStderr();
    zn::utils::setLogSink([&](const char* text) { heard.emplace_back(text); });
    znLog::error("first");
    znLog::error("second");
    zn::utils::setLogSink({});
    znLog::error("third");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "third\n");
    EXPECT_THAT(heard, testing::ElementsAre("first", "second"));
}

TEST(Log, NoTextIsNoMessage)
{
    testing::internal::CaptureStderr();
    znLog::error(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
