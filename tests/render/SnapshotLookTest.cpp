#include "render/SnapshotLook.h"

#include <gtest/gtest.h>

namespace render
{

TEST(SnapshotLook, NamesAreFoundInAnyCase)
{
    for (const SnapshotLook look : {SnapshotLook::Plain, SnapshotLook::Studio}) {
        EXPECT_EQ(lookFromText(lookName(look)).look, look);
        EXPECT_EQ(lookFromText(lookName(look).toUpper()).look, look);
    }
}

TEST(SnapshotLook, AnUnknownNameIsToldWithTheKnownOnes)
{
    const LookChoice choice = lookFromText(QStringLiteral("shiny"));
    EXPECT_FALSE(choice.look);
    for (const char* word : {"shiny", "plain", "studio"})
        EXPECT_TRUE(choice.error.contains(QLatin1String(word))) << word;
}

} // namespace render
