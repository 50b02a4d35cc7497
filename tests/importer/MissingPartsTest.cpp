#include "importer/MissingParts.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

namespace
{

zn::MissingPart goneFrom(const QStringList& places)
{
    return {QStringLiteral("/a%20b%1.stp"), QStringLiteral("gone"), places};
}

TEST(MissingParts, APartIsDescribedInOneLineWithTheFirstOfItsPlaces)
{
    const QString a = QStringLiteral("A");
    const QString b = QStringLiteral("B/C");
    EXPECT_EQ(describe(goneFrom({})), QStringLiteral("/a%20b%1.stp: gone"));
    EXPECT_EQ(describe(goneFrom({a, b})), QStringLiteral("/a%20b%1.stp: gone (used by A, B/C)"));
    EXPECT_EQ(describe(goneFrom({a, b, a, a, b})), QStringLiteral("/a%20b%1.stp: gone (used by A, B/C, A and 2 more)"));
}

} // namespace
