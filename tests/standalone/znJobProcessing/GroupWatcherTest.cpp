#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <memory>

namespace
{

const char pidFile[] = "ZN_TEST_PID_FILE";

/// What runs in the process that is going to be killed.
void playHost(const QString& command)
{
    znProcessJob job(command, nullptr);
    job.run();
    waitUntil([] { return false; });
}

/// Runs a test of this program once more as a host of its own, which is killed when a process has told its id.
class HostDeath : public ::testing::Test
{
protected:
    static bool isHost() { return qEnvironmentVariableIsSet(pidFile); }
    static QString pidPath() { return qEnvironmentVariable(pidFile); }

    /// Whether the process lived beside the host and not after it.
    void expectDeath(const char* test)
    {
        QProcess host;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(pidFile), folder.path(QStringLiteral("pid")));
        environment.insert(QStringLiteral("TMPDIR"), folder.path(QString())); // it won't clear up
        host.setProcessEnvironment(environment);
        host.start(QCoreApplication::applicationFilePath(),
                   {QStringLiteral("--gtest_filter=HostDeath.") + QString::fromLatin1(test)});
        ASSERT_TRUE(waitUntil([&] { return !folder.read(QStringLiteral("pid")).isEmpty(); }));
        const qint64 process = folder.read(QStringLiteral("pid")).toLongLong();
        EXPECT_FALSE(hasEnded(process));
        host.kill();
        ASSERT_TRUE(host.waitForFinished());
        EXPECT_TRUE(waitUntil([&] { return hasEnded(process); }));
        ::kill(static_cast<pid_t>(process), SIGKILL);
    }

    TestFolder folder;
};

TEST_F(HostDeath, EndsTheProcess)
{
    if (isHost())
        return playHost(scripted(QStringLiteral("pid \"%1\";wait 60000").arg(pidPath())));
    expectDeath("EndsTheProcess");
}

TEST_F(HostDeath, EndsWhatAShellHasStarted)
{
    if (isHost()) {
        // A second command keeps the shell from becoming the first.
        return playHost(QStringLiteral("sh -c ") +
                        quoted(scripted(QStringLiteral("pid \"%1\";wait 60000").arg(pidPath()))
                                   .replace(QStringLiteral("\"\"\""), QStringLiteral("\\\"")) +
                               QStringLiteral("; true")));
    }
    expectDeath("EndsWhatAShellHasStarted");
}

TEST_F(HostDeath, EndsAGrandchildThatIgnoresEverythingElse)
{
    if (isHost())
        return playHost(scripted(QStringLiteral("ignore-stop;grandchild 60000 \"%1\";wait 60000").arg(pidPath())));
    expectDeath("EndsAGrandchildThatIgnoresEverythingElse");
}

} // namespace
