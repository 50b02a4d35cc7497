#include "standalone/znKernel/KeptLogs.h"

#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

using namespace zn::kernel;

namespace
{

class KeptLogsTest : public SessionTest
{
protected:
    KeptLogsTest() { qputenv("XDG_STATE_HOME", path(QStringLiteral("state ä")).toUtf8()); }
    ~KeptLogsTest() override { m_before.isNull() ? qunsetenv("XDG_STATE_HOME") : qputenv("XDG_STATE_HOME", m_before); }

    static QStringList kept() { return QDir(keptLogsFolder()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    /// A log that was kept some days ago.
    static void keepBefore(const QString& name, int days)
    {
        ASSERT_TRUE(QDir().mkpath(keptLogsFolder()));
        QFile file(keptLogsFolder() + QLatin1Char('/') + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const QDateTime time = QDateTime::currentDateTimeUtc().addDays(-days);
        ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    }

    const QByteArray m_before = qgetenv("XDG_STATE_HOME");
};

TEST_F(KeptLogsTest, TheFolderIsTheUsersState)
{
    EXPECT_EQ(keptLogsFolder(), path(QStringLiteral("state ä/znimport/logs")));
    for (const char* none : {"", "relative/state"}) {
        qputenv("XDG_STATE_HOME", none);
        EXPECT_EQ(keptLogsFolder(), QDir::homePath() + QStringLiteral("/.local/state/znimport/logs"));
    }
}

TEST_F(KeptLogsTest, NobodyElseMayLookAtWhatIsKept)
{
    ASSERT_TRUE(QDir().mkpath(keptLogsFolder()));
    const auto all = QFileDevice::Permissions(0x7777);
    ASSERT_TRUE(QFile::setPermissions(keptLogsFolder(), all));
    const QString copy = keepLog(write(QStringLiteral("größe.osb.log"), "Error: odd\n"));
    const auto others = QFileDevice::Permissions(0x0077);
    EXPECT_EQ(QFile::permissions(keptLogsFolder()) & others, QFileDevice::Permissions());
    EXPECT_EQ(QFile::permissions(copy) & others, QFileDevice::Permissions());
    EXPECT_TRUE(QFileInfo(copy).isReadable());
}

TEST_F(KeptLogsTest, LogsOfOneNameAreKeptBesideEachOther)
{
    const QString log = write(QStringLiteral("part.osb.log"), "one");
    // So many that some of them fall into one millisecond.
    QStringList copies;
    for (int number = 0; number < 50; ++number)
        copies.append(keepLog(log));
    EXPECT_EQ(kept().size(), 50);
    EXPECT_EQ(copies.removeDuplicates(), 0);
    EXPECT_TRUE(std::is_sorted(copies.begin(), copies.end()));
    EXPECT_TRUE(copies.front().endsWith(QStringLiteral("-part.osb.log")));
}

TEST_F(KeptLogsTest, WhatIsOldGoes)
{
    keepBefore(QStringLiteral("old.log"), keptLogDays + 1);
    keepBefore(QStringLiteral("young.log"), keptLogDays - 1);
    keepBefore(QStringLiteral("mine.txt"), keptLogDays + 1);
    keepLog(write(QStringLiteral("new.log"), "x"));
    EXPECT_EQ(kept().size(), 3) << kept().join(QLatin1Char(' ')).toStdString();
    EXPECT_FALSE(kept().contains(QStringLiteral("old.log")));
    EXPECT_TRUE(kept().contains(QStringLiteral("mine.txt")));
}

TEST_F(KeptLogsTest, BeyondTheNumberTheOldestGo)
{
    for (int number = 0; number < mostKeptLogs; ++number)
        keepBefore(QStringLiteral("%1.log").arg(number), number % keptLogDays == 7 ? 9 : 1);
    keepBefore(QStringLiteral("oldest.log"), 20);
    const QString copy = keepLog(write(QStringLiteral("new.log"), "x"));
    EXPECT_EQ(kept().size(), mostKeptLogs);
    EXPECT_TRUE(QFileInfo::exists(copy));
    EXPECT_FALSE(kept().contains(QStringLiteral("oldest.log")));
}

TEST_F(KeptLogsTest, WithoutALogOrAFolderNothingIsKept)
{
    EXPECT_EQ(keepLog(path(QStringLiteral("none.log"))), QString());
    write(QStringLiteral("state ä"), "a file in the way");
    EXPECT_EQ(keepLog(write(QStringLiteral("some.log"), "x")), QString());
}

TEST_F(KeptLogsTest, OnlyWhatLiesInTheTemporaryFolderGoesWithTheSession)
{
    EXPECT_TRUE(goesWithSession(m_session.temporaryFolder() + QStringLiteral("/a.log")));
    EXPECT_FALSE(goesWithSession(m_session.temporaryFolder() + QStringLiteral("2/a.log")));
    EXPECT_FALSE(goesWithSession(path(QStringLiteral("a.log"))));
}

} // namespace
