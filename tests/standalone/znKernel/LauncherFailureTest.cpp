#include "standalone/znKernel/LauncherFailure.h"

#include "host/znKernel/znPtxHelper.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QSignalSpy>

namespace
{

/// Launchers are shell scripts of the test's folder, which say something and either end or run the converter.
class LauncherFailure : public SessionTest
{
protected:
    /// A program of this name in the test's folder.
    QString program(const QString& name, const QByteArray& script) const
    {
        const QString file = write(name, "#!/bin/sh\n" + script + "\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file;
    }

    void setLauncher(const QString& file)
    {
        m_launcher = quoted(file);
        ASSERT_FALSE(m_session.settings().set(QStringLiteral("converter.launcher"), m_launcher));
    }

    /// The exit code that a job is told whose converter is run by the launcher.
    int codeOf(const QString& converter, const QString& words = QString())
    {
        znProcessJob job(m_launcher + QLatin1Char(' ') + quoted(converter) + QLatin1Char(' ') + words, nullptr);
        QSignalSpy finished(&job, &znAbstractJob::finished);
        job.run();
        EXPECT_TRUE(waitUntil([&] { return finished.size() == 1; }));
        return job.getExitCode().value_or(-1000);
    }

    static std::string description(int code)
    {
        return znPtxHelper::getProcessErrorDescription(code, "/no/such.log").toStdString();
    }

    QString m_launcher;
};

const char* const runsIt = "exec \"$@\"";

TEST_F(LauncherFailure, OfOneThatReachesNoMachineIsNoMinusOneOfTheConverter)
{
    setLauncher(
        program(QStringLiteral("ssh"), "echo 'ssh: connect to host far port 22: Connection refused' >&2; exit 255"));
    EXPECT_EQ(codeOf(QStringLiteral("/opt/conv")), 251);
    EXPECT_EQ(description(251),
              "The launcher of the converter failed. ssh: connect to host far port 22: Connection refused");
}

TEST_F(LauncherFailure, IsKnownByTheWordsThatSshSaysWithoutItsName)
{
    setLauncher(program(QStringLiteral("ssh"), "echo Host key verification failed. >&2; exit 255"));
    EXPECT_EQ(codeOf(QStringLiteral("/opt/conv")), 251);
    setLauncher(program(QStringLiteral("other"), "echo Host key verification failed. >&2; exit 255"));
    EXPECT_EQ(codeOf(QStringLiteral("/opt/conv")), -1);
}

TEST_F(LauncherFailure, IsNoneWhereTheConverterEndsWithMinusOne)
{
    setLauncher(program(QStringLiteral("srun"), "\"$@\"; code=$?; "
                                                "echo \"srun: error: n1: task 0: Exited with exit code $code\" >&2; "
                                                "exit $code"));
    const QString converter = program(QStringLiteral("conv"), "echo no external parts; exit 255");
    EXPECT_EQ(codeOf(converter), -1);
}

TEST_F(LauncherFailure, OfASchedulerIsToldInItsOwnWords)
{
    setLauncher(
        program(QStringLiteral("srun"), "echo 'srun: error: Unable to create step: Job expired' >&2; exit 255"));
    EXPECT_EQ(codeOf(QStringLiteral("/opt/conv")), 251);
    EXPECT_EQ(description(251),
              "The launcher of the converter failed. srun: error: Unable to create step: Job expired");
}

TEST_F(LauncherFailure, IsEveryCodeThatOurConverterNeverEndsWith)
{
    const QString converter = program(QStringLiteral("ptxconvert"), "exit $1");
    setLauncher(program(QStringLiteral("launch"), runsIt));
    for (const int own : {0, 2, 3, 5, 6, 7, 8, 10, 11, 12, 21, 25, 139})
        EXPECT_EQ(codeOf(converter, QString::number(own)), own);
    for (const int foreign : {1, 4, 125, 127, 255})
        EXPECT_EQ(codeOf(converter, QString::number(foreign)), 251) << foreign;
    setLauncher(program(QStringLiteral("launch"), "echo no such image; exit 125"));
    EXPECT_EQ(codeOf(converter), 251);
    EXPECT_EQ(description(251), "The launcher of the converter failed. no such image");
}

TEST_F(LauncherFailure, WithoutAWordIsNotJudgedBehindOtherConverters)
{
    setLauncher(program(QStringLiteral("ssh"), "exit 255"));
    EXPECT_EQ(codeOf(QStringLiteral("/opt/conv")), -1);
    setLauncher(program(QStringLiteral("ssh"), "echo 'ssh: a warning' >&2; exit 7"));
    EXPECT_EQ(codeOf(QStringLiteral("/opt/conv")), 7);
}

TEST_F(LauncherFailure, IsNotLookedForInCommandsThatNoLauncherStarts)
{
    const QString converter = program(QStringLiteral("ptxconvert"), "exit 255");
    setLauncher(program(QStringLiteral("launch"), runsIt));
    m_launcher.clear();
    EXPECT_EQ(codeOf(converter), -1);
    ASSERT_FALSE(m_session.settings().set(QStringLiteral("converter.launcher"), QString()));
    EXPECT_EQ(codeOf(converter), -1);
}

} // namespace
