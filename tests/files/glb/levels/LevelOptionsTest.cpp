#include "files/glb/levels/LevelOptions.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::levelPath;
using files::glb::levelShares;

TEST(LevelOptionsTest, SharesAreNumbersBetweenCommas)
{
    EXPECT_EQ(levelShares({}), std::vector<double>());
    EXPECT_EQ(levelShares(QStringLiteral("0.5")), std::vector<double>{0.5});
    EXPECT_EQ(levelShares(QStringLiteral("0.75, 0.5 ,1e-3")), (std::vector<double>{0.75, 0.5, 0.001}));
    EXPECT_EQ(levelShares(QStringLiteral("0.9,0.8,0.7,0.6,0.5,0.4,0.3,0.2,0.1"))->size(), 9u);
}

TEST(LevelOptionsTest, OtherTextsAreNone)
{
    for (const char* text : {"1", "0", "-0.5", "0.5,0.5", "0.1,0.5", "0.5,", ",0.5", " ", "half", "0.5;0.1", "50%",
                             "nan", "inf", "1.5,0.5", "0.95,0.9,0.8,0.7,0.6,0.5,0.4,0.3,0.2,0.1"})
        EXPECT_FALSE(levelShares(QString::fromLatin1(text))) << text;
}

TEST(LevelOptionsTest, LevelsStandBesideTheFirstFile)
{
    EXPECT_EQ(levelPath(QStringLiteral("/a.b/OUT.glb"), 1), QStringLiteral("/a.b/OUT.lod1.glb"));
    EXPECT_EQ(levelPath(QStringLiteral("x.y.GLB"), 12), QStringLiteral("x.y.lod12.GLB"));
    EXPECT_EQ(levelPath(QStringLiteral("/a.b/OUT"), 2), QStringLiteral("/a.b/OUT.lod2"));
}

} // namespace
