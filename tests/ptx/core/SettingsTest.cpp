#include "ptx/core/Settings.h"

#include <gtest/gtest.h>

#include <clocale>
#include <set>

using namespace ptx::core;

TEST(Settings, StartWithTheDefaultsOfTheTable)
{
    const Settings settings;
    EXPECT_EQ(settings.number(Setting::RelativeDeviation), 0.001);
    EXPECT_EQ(settings.number(Setting::Angle), 20);
    EXPECT_EQ(settings.number(Setting::Deviation), 0);
    EXPECT_TRUE(settings.isOn(Setting::Heal));
}

TEST(Settings, EveryRowHasANameAHelpAndADefaultWithinItsRange)
{
    std::set<std::string> names;
    for (const SettingRow& row : settingRows()) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_NE(*row.help, '\0') << row.name;
        EXPECT_LE(row.low, row.standard) << row.name;
        EXPECT_GE(row.high, row.standard) << row.name;
    }
}

TEST(Settings, TakeNumbersWithinTheRange)
{
    Settings settings;
    EXPECT_EQ(settings.assign("tessellation.angle=12.5"), std::nullopt);
    EXPECT_EQ(settings.number(Setting::Angle), 12.5);
    EXPECT_EQ(settings.assign("heal=0"), std::nullopt);
    EXPECT_FALSE(settings.isOn(Setting::Heal));
}

TEST(Settings, SayWhatIsWrongAndKeepTheValue)
{
    Settings settings;
    EXPECT_EQ(settings.assign("tessellation.angle=0.5"), "tessellation.angle takes a number from 1 to 90, not 0.5");
    EXPECT_EQ(settings.assign("tessellation.angle=fine"), "tessellation.angle takes a number, not \"fine\"");
    EXPECT_EQ(settings.assign("tessellation.angle=3 "), "tessellation.angle takes a number, not \"3 \"");
    EXPECT_EQ(settings.assign("tessellation.angle"), "tessellation.angle takes a number, not \"\"");
    EXPECT_EQ(settings.assign("tessellation.angle=nan"), "tessellation.angle takes a number, not \"nan\"");
    EXPECT_EQ(settings.assign("Angle=3"), "there is no setting named \"Angle\"");
    EXPECT_EQ(settings.number(Setting::Angle), 20);
}

TEST(Settings, NumbersHaveADotInEveryLocale)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    Settings settings;
    EXPECT_EQ(settings.assign("tessellation.relative-deviation=0.25"), std::nullopt);
    EXPECT_EQ(settings.number(Setting::RelativeDeviation), 0.25);
    EXPECT_EQ(numberText(0.25), "0.25");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(Settings, HelpNamesEveryRowWithItsDefault)
{
    const std::string help = settingsHelp();
    for (const SettingRow& row : settingRows())
        EXPECT_NE(help.find(std::string(row.name) + "=" + numberText(row.standard)), help.npos) << row.name;
}
