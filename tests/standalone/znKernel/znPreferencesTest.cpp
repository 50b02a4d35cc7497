#include "host/znKernel/znPreferences.h"

#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

class PreferencesTest : public SessionTest
{
protected:
    static QString folder()
    {
        QString result;
        znPreferences::getData().get("FileIO tmp path", result);
        return result;
    }
    void setFolder(const QString& value)
    {
        EXPECT_FALSE(m_session.settings().set(QStringLiteral("files.temporaryFolder"), value));
    }
};

TEST_F(PreferencesTest, TheFolderForConvertedFilesIsAbsentUntilTheUserChoosesOne)
{
    EXPECT_TRUE(znPreferences::getData().get("FileIO tmp path").empty());
    setFolder(QString::fromUtf8("/tmp/größe"));
    EXPECT_EQ(folder(), QString::fromUtf8("/tmp/größe"));
}

TEST_F(PreferencesTest, TheFolderFollowsItsSetting)
{
    setFolder(QStringLiteral("/tmp/a"));
    EXPECT_EQ(folder(), QStringLiteral("/tmp/a"));
    setFolder(QStringLiteral("/tmp/b"));
    EXPECT_EQ(folder(), QStringLiteral("/tmp/b"));
    setFolder(QString());
    EXPECT_EQ(folder(), QString());
}

TEST_F(PreferencesTest, TheFolderCanStandInASettingsFile)
{
    const QString file = write(QStringLiteral("settings.txt"), "files.temporaryFolder = /tmp/größe 2\n");
    EXPECT_FALSE(m_session.settings().load(file));
    EXPECT_EQ(folder(), QString::fromUtf8("/tmp/größe 2"));
}

TEST_F(PreferencesTest, WhatIsPutInDirectlyStaysUntilTheSettingChanges)
{
    setFolder(QStringLiteral("/tmp/a"));
    EXPECT_EQ(folder(), QStringLiteral("/tmp/a"));
    m_session.preferences().set("FileIO tmp path", boost::any(42), true);
    EXPECT_EQ(boost::any_cast<int>(znPreferences::getData().get("FileIO tmp path")), 42);
    setFolder(QStringLiteral("/tmp/b"));
    EXPECT_EQ(folder(), QStringLiteral("/tmp/b"));
}

} // namespace
