// What a class that derives from the process job reads, writes and overrides.

#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QPointer>

#include <gtest/gtest.h>

using namespace znCADFileTypes;

namespace
{

/// A process job with all of the protected members in use.
class MembersJob : public znProcessJob
{
public:
    explicit MembersJob(const QString& script) : znProcessJob(scripted(script), nullptr) {}

    void setScript(const QString& script) { m_command = scripted(script); }
    void setCommand(const QString& command) { m_command = command; }
    void setInputPresent(bool present) { m_inputPresent = present; }
    bool isInputPresent() const { return m_inputPresent; }
    const QProcess* process() const { return m_process; }

    std::function<void(MembersJob&)> onFinish = [](MembersJob&) {};
    /// A state that finish() puts in the place of the frame's.
    std::optional<JobState> forgiven;
    int connectionCalls = 0;
    int connectionsMade = 0;

protected:
    void finish() override
    {
        onFinish(*this);
        if (forgiven) {
            m_state = *forgiven;
        }
        znProcessJob::finish();
    }

    void createBaseConnections() override
    {
        ++connectionCalls;
        if (m_connectionsMade) {
            return;
        }
        connect(this, &znAbstractJob::starting, this, [this] { ++connectionsMade; });
        znProcessJob::createBaseConnections();
        m_connectionsMade = true;
    }

    QString getErrorDescription(int exitCode) const override { return QStringLiteral("<%1>").arg(exitCode); }
};

class ProcessJobMembers : public ::testing::Test
{
protected:
    static JobState endOf(MembersJob& job)
    {
        std::optional<JobState> end;
        const auto connection = QObject::connect(&job, &znAbstractJob::finished, [&](JobState state) { end = state; });
        job.run();
        EXPECT_TRUE(waitUntil([&] { return end.has_value(); }));
        QObject::disconnect(connection);
        return end.value_or(JobWaiting);
    }
};

TEST_F(ProcessJobMembers, TheProcessIsLaunchedWhenRunReturns)
{
    MembersJob job(QStringLiteral("wait 60000"));
    EXPECT_TRUE(job.process() == nullptr);
    job.run();
    ASSERT_TRUE(job.process() != nullptr);
    EXPECT_NE(job.process()->state(), QProcess::NotRunning);
    EXPECT_EQ(job.process()->parent(), &job);
}

TEST_F(ProcessJobMembers, FinishFindsStateAndExitCodeOfTheProcess)
{
    MembersJob job(QStringLiteral("exit 21"));
    JobState state = JobWaiting;
    int exitCode = -1;
    QProcess::ExitStatus status = QProcess::CrashExit;
    job.onFinish = [&](MembersJob& self) {
        state = self.getState();
        exitCode = self.process()->exitCode();
        status = self.process()->exitStatus();
    };
    EXPECT_EQ(endOf(job), JobFailed);
    EXPECT_EQ(state, JobFailed);
    EXPECT_EQ(exitCode, 21);
    EXPECT_EQ(status, QProcess::NormalExit);
}

TEST_F(ProcessJobMembers, FinishIsToldOfACrashAndOfAFailedStart)
{
    MembersJob crashing(QStringLiteral("crash 6"));
    QProcess::ExitStatus status = QProcess::NormalExit;
    crashing.onFinish = [&](MembersJob& self) { status = self.process()->exitStatus(); };
    EXPECT_EQ(endOf(crashing), JobFailed);
    EXPECT_EQ(status, QProcess::CrashExit);

    MembersJob missing(QString{});
    missing.setCommand(QStringLiteral("/no/such/program"));
    QProcess::ProcessError error = QProcess::UnknownError;
    missing.onFinish = [&](MembersJob& self) { error = self.process()->error(); };
    EXPECT_EQ(endOf(missing), JobFailed);
    EXPECT_EQ(error, QProcess::FailedToStart);
}

TEST_F(ProcessJobMembers, FinishMayForgiveAFailureOrRefuseASuccess)
{
    MembersJob failing(QStringLiteral("exit 3"));
    failing.forgiven = JobSucceeded;
    EXPECT_EQ(endOf(failing), JobSucceeded);
    EXPECT_EQ(failing.getErrorText(), QString());

    MembersJob good(QStringLiteral("exit 0"));
    good.forgiven = JobFailed;
    EXPECT_EQ(endOf(good), JobFailed);
    EXPECT_EQ(good.getErrorText(), QStringLiteral("<0>"));
}

TEST_F(ProcessJobMembers, TheDescriptionOfASubclassBecomesTheErrorText)
{
    MembersJob job(QStringLiteral("exit 25"));
    EXPECT_EQ(endOf(job), JobFailed);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("<25>"));
}

TEST_F(ProcessJobMembers, EachLaunchHasAProcessOfItsOwnAndTheLastAnswers)
{
    MembersJob job(QStringLiteral("exit 9"));
    endOf(job);
    const QPointer<const QProcess> first(job.process());
    job.setScript(QStringLiteral("exit 11"));
    endOf(job);
    EXPECT_EQ(job.process()->exitCode(), 11);
    EXPECT_NE(first.data(), job.process());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(first.isNull());
}

TEST_F(ProcessJobMembers, ConnectionsAreMadeOnceHoweverOftenTheJobRuns)
{
    MembersJob job(QStringLiteral("exit 0"));
    EXPECT_EQ(job.connectionCalls, 0);
    endOf(job);
    EXPECT_EQ(job.connectionCalls, 1);
    EXPECT_EQ(job.connectionsMade, 1);
    endOf(job);
    EXPECT_EQ(job.connectionCalls, 2);
    EXPECT_EQ(job.connectionsMade, 2); // one connection, heard in each of two runs
}

TEST_F(ProcessJobMembers, ACommandWhoseInputIsMissingIsLaunchedAllTheSame)
{
    MembersJob job(QStringLiteral("exit 3"));
    EXPECT_TRUE(job.isInputPresent());
    job.setInputPresent(false);
    endOf(job);
    EXPECT_EQ(job.getExitCode(), 3);
    EXPECT_FALSE(job.isInputPresent());
}

TEST_F(ProcessJobMembers, IsNoMechanorJobUnlessASubclassSaysSo)
{
    EXPECT_FALSE(MembersJob(QString{}).isMechanorJob());
}

} // namespace
