#include "files/Error.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace
{

using files::Error;
using files::ErrorCode;

TEST(ErrorTest, FileMessageAndPlaceStandInOneLine)
{
    const Error error{{QStringLiteral("broken"), QStringLiteral("a/b.obj"), QStringLiteral("line 4")},
                      ErrorCode::Damaged};
    EXPECT_EQ(error.toString(), QStringLiteral("a/b.obj: broken (line 4)"));
    EXPECT_EQ(error.toStringWithCode(), QStringLiteral("a/b.obj: broken (Damaged at line 4)"));
}

TEST(ErrorTest, WithoutAPlaceNoBracketIsLeftEmpty)
{
    const Error error{{QStringLiteral("File too large"), QStringLiteral("x.glb"), {}}, ErrorCode::WriteFailed};
    EXPECT_EQ(error.toString(), QStringLiteral("x.glb: File too large"));
    EXPECT_EQ(error.toStringWithCode(), QStringLiteral("x.glb: File too large (WriteFailed)"));
}

TEST(ErrorTest, PercentSignsOfAFileNameStayAsTheyAre)
{
    const Error error{{QStringLiteral("100 %2 broken"), QStringLiteral("%3 %1.obj"), QStringLiteral("line %1")},
                      ErrorCode::Damaged};
    EXPECT_EQ(error.toString(), QStringLiteral("%3 %1.obj: 100 %2 broken (line %1)"));
}

TEST(ErrorTest, EachCodeHasANameOfItsOwn)
{
    std::set<std::string> names;
    const int last = static_cast<int>(ErrorCode::Last);
    for (int code = 0; code <= last; ++code)
        names.insert(files::errorName(static_cast<ErrorCode>(code)));
    EXPECT_EQ(names.size(), static_cast<std::size_t>(last) + 1);
    EXPECT_EQ(names.count("Unknown"), 0u);
    EXPECT_STREQ(files::errorName(ErrorCode::NotFound), "NotFound");
    EXPECT_STREQ(files::errorName(ErrorCode::DamagedMesh), "DamagedMesh");
    EXPECT_STREQ(files::errorName(ErrorCode::TooLarge), "TooLarge");
    EXPECT_STREQ(files::errorName(ErrorCode::WriteFailed), "WriteFailed");
    EXPECT_STREQ(files::errorName(ErrorCode::ReaderFailed), "ReaderFailed");
    EXPECT_STREQ(files::errorName(ErrorCode::Cancelled), "Cancelled");
}

TEST(ErrorTest, ANumberThatIsNoCodeIsUnknown)
{
    EXPECT_STREQ(files::errorName(static_cast<ErrorCode>(1000)), "Unknown");
}

} // namespace
