#include "files/Expected.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

using files::Error;
using files::ErrorCode;
using files::Expected;
using files::Result;

Error cut()
{
    return {{QStringLiteral("cut short"), QStringLiteral("a.osb"), QStringLiteral("byte 7")}, ErrorCode::Truncated};
}

TEST(ExpectedTest, AValueIsThereAndNoError)
{
    Expected<std::string> word = std::string("seven");
    EXPECT_TRUE(word);
    EXPECT_EQ(word.value(), "seven");
    EXPECT_EQ(word->size(), 5u);
    word.value() += 's';
    EXPECT_EQ(word.value(), "sevens");
    EXPECT_THROW((void)word.error(), std::bad_variant_access);
}

TEST(ExpectedTest, AnErrorIsThereAndNoValue)
{
    const Expected<std::string> word = cut();
    EXPECT_FALSE(word);
    EXPECT_EQ(word.error().code, ErrorCode::Truncated);
    EXPECT_EQ(word.error().toString(), QStringLiteral("a.osb: cut short (byte 7)"));
    EXPECT_THROW((void)word.value(), std::bad_variant_access);
}

TEST(ExpectedTest, AValueThatMeansFalseIsStillAValue)
{
    EXPECT_TRUE(Expected<int>(0));
    EXPECT_TRUE(Expected<const char*>(nullptr));
}

TEST(ExpectedTest, AValueThatCannotBeCopiedIsMovedOut)
{
    Expected<std::unique_ptr<int>> number = std::make_unique<int>(9);
    const std::unique_ptr<int> taken = std::move(number).value();
    EXPECT_EQ(*taken, 9);
}

TEST(ExpectedTest, AStepWithoutAValueIsGoodOrTellsItsError)
{
    EXPECT_TRUE(Expected<void>());
    EXPECT_THROW((void)Expected<void>().error(), std::bad_variant_access);
    const Expected<void> failed = cut();
    EXPECT_FALSE(failed);
    EXPECT_EQ(failed.error().code, ErrorCode::Truncated);
}

TEST(ExpectedTest, AResultTellsItsWarningsAfterASuccessAndAfterAFailure)
{
    const std::vector<files::Note> odd = {{QStringLiteral("odd"), QStringLiteral("a.osb"), {}}};
    const Result<int> good(Expected<int>(3), odd);
    ASSERT_TRUE(good);
    EXPECT_EQ(good.value(), 3);
    EXPECT_EQ(good.warnings, odd);
    const Result<int> bad(Expected<int>(cut()), odd);
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.error().code, ErrorCode::Truncated);
    EXPECT_EQ(bad.warnings, odd);
    EXPECT_TRUE(Result<int>(3).warnings.empty());
}

} // namespace
