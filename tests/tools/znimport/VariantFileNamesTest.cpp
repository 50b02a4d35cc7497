#include "tools/znimport/VariantFileNames.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

using znimport::variantFileNames;

namespace
{

TEST(VariantFileNames, NamesBecomeOnesThatFileSystemsTake)
{
    EXPECT_EQ(variantFileNames({QString::fromUtf8("Größe 1"), QStringLiteral("a/b\\c:d"), QStringLiteral("../x"),
                                QStringLiteral("a*b?c\"d<e>f|g\nh")}),
              (QStringList{QString::fromUtf8("Größe 1"), QStringLiteral("a_b_c_d"), QStringLiteral("_._x"),
                           QStringLiteral("a_b_c_d_e_f_g_h")}));
    EXPECT_EQ(variantFileNames({QString(300, QLatin1Char('x'))})[0].size(), 60);
}

TEST(VariantFileNames, NamesThatWouldBeOneFileAreNumbered)
{
    EXPECT_EQ(variantFileNames({QStringLiteral("Night"), QStringLiteral("night"), QStringLiteral("a/b"),
                                QStringLiteral("a:b"), QStringLiteral("NIGHT")}),
              (QStringList{QStringLiteral("Night"), QStringLiteral("night 2"), QStringLiteral("a_b"),
                           QStringLiteral("a_b 2"), QStringLiteral("NIGHT 3")}));
}

} // namespace
