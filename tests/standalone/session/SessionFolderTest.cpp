#include "standalone/session/SessionFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using zn::SessionFolder;

namespace
{

/// A folder for temporary files of the test's own.
class SessionFolders : public testing::Test
{
protected:
    SessionFolders() { qputenv("TMPDIR", m_temporary.path().toUtf8()); }
    ~SessionFolders() override
    {
        if (m_before.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", m_before);
    }

    QString path(const char* name) const { return m_temporary.filePath(QString::fromUtf8(name)); }

    /// The folder of a session in a process that was killed while it lived.
    QString killed() const
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            const SessionFolder folder;
            const QByteArray name = folder.path().toUtf8();
            [[maybe_unused]] const auto written = write(ends[1], name.constData(), std::size_t(name.size()));
            raise(SIGKILL);
        }
        close(ends[1]);
        char name[4096] = {};
        const auto length = read(ends[0], name, sizeof name - 1);
        close(ends[0]);
        waitpid(child, nullptr, 0);
        return QString::fromUtf8(name, int(std::max<ssize_t>(length, 0)));
    }

private:
    QByteArray m_before = qgetenv("TMPDIR");
    QTemporaryDir m_temporary{QDir::tempPath() + QString::fromUtf8("/zn session ä 壳 XXXXXX")};
};

TEST_F(SessionFolders, AreForTheUserAlone)
{
    const SessionFolder folder;
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
    EXPECT_EQ(QFileInfo(folder.path()).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther), 0);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(SessionFolders, OfKilledSessionsGoWithTheNextOne)
{
    const QString left = killed();
    QFile inside(left + QStringLiteral("/part.osb"));
    ASSERT_TRUE(inside.open(QIODevice::WriteOnly));
    const SessionFolder next;
    EXPECT_FALSE(QFileInfo::exists(left));
    EXPECT_TRUE(QFileInfo::exists(next.path()));
}

TEST_F(SessionFolders, OfLivingSessionsStay)
{
    const SessionFolder first;
    const SessionFolder second;
    EXPECT_NE(first.path(), second.path());
    EXPECT_TRUE(QFileInfo::exists(first.path()));
}

TEST_F(SessionFolders, WhatIsNoSessionsFolderStays)
{
    const QString left = killed();
    QDir().mkpath(path("zn-session-without"));
    QDir().mkpath(path("another"));
    QFile::copy(left + QStringLiteral("/.lock"), path("another/.lock"));
    QFile::link(path("another"), path("zn-session-link"));
    const SessionFolder next;
    EXPECT_FALSE(QFileInfo::exists(left));
    EXPECT_TRUE(QFileInfo::exists(path("zn-session-without")));
    EXPECT_TRUE(QFileInfo::exists(path("another/.lock")));
}

TEST_F(SessionFolders, AreGoneWhenTheyAreRemoved)
{
    SessionFolder folder;
    folder.remove();
    EXPECT_FALSE(QFileInfo::exists(folder.path()));
}

TEST_F(SessionFolders, AFolderForTemporaryFilesThatIsNotThereIsNamed)
{
    EXPECT_FALSE(SessionFolder::trouble());
    EXPECT_TRUE(QDir(path("")).isEmpty()) << "the question leaves nothing behind";
    qputenv("TMPDIR", path("missing").toUtf8());
    const auto trouble = SessionFolder::trouble();
    ASSERT_TRUE(trouble);
    EXPECT_THAT(trouble->toStdString(), testing::HasSubstr(path("missing").toStdString()));
}

} // namespace
