#include "files/ReadReport.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

namespace
{

using files::ErrorCode;
using files::Note;
using files::ReadReport;

const Note first{QString::fromUtf8("farblos ä"), QStringLiteral("a b.mtl"), QStringLiteral("line 7")};
const Note second{QStringLiteral("skipped"), QStringLiteral("c.obj"), {}};

TEST(ReadReportTest, WarningsArriveInTheirOrder)
{
    const auto report = ReadReport::fromBytes(ReadReport{{}, {first, second}}.toBytes());
    ASSERT_TRUE(report);
    EXPECT_FALSE(report->error);
    EXPECT_EQ(report->warnings, (std::vector<Note>{first, second}));
}

TEST(ReadReportTest, AnErrorArrivesWithItsCode)
{
    const auto report = ReadReport::fromBytes(ReadReport{files::Error{first, ErrorCode::Cancelled}, {}}.toBytes());
    ASSERT_TRUE(report && report->error);
    EXPECT_EQ(report->error->code, ErrorCode::Cancelled);
    EXPECT_EQ(static_cast<const Note&>(*report->error), first);
    EXPECT_TRUE(report->warnings.empty());
}

TEST(ReadReportTest, EveryPieceOfAReportIsNone)
{
    const QByteArray whole = ReadReport{files::Error{first, ErrorCode::Damaged}, {second}}.toBytes();
    for (int size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(ReadReport::fromBytes(whole.left(size))) << size;
    EXPECT_FALSE(ReadReport::fromBytes(whole + '\0'));
}

TEST(ReadReportTest, ACodeThatIsNoneAndTooManyWarningsAreRefused)
{
    const auto unknown = static_cast<ErrorCode>(static_cast<int>(ErrorCode::Last) + 1);
    EXPECT_FALSE(ReadReport::fromBytes(ReadReport{files::Error{first, unknown}, {}}.toBytes()));
    EXPECT_TRUE(ReadReport::fromBytes(ReadReport{{}, std::vector<Note>(1000, second)}.toBytes()));
    EXPECT_FALSE(ReadReport::fromBytes(ReadReport{{}, std::vector<Note>(1001, second)}.toBytes()));
}

} // namespace
