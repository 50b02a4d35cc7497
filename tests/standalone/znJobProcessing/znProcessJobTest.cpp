#include "standalone/znJobProcessing/ProcessOutput.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QPointer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <unistd.h>

#include <memory>

using namespace znCADFileTypes;

class ProcessJob : public ::testing::Test
{
protected:
    /// Runs `job` to its end.
    QStringList signalsOf(znProcessJob& job)
    {
        SignalLog log;
        log.watch(job);
        job.run();
        EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting")}));
        EXPECT_TRUE(waitUntil([&] { return log.lines.last().startsWith(QStringLiteral("finished")); }));
        drainEvents();
        return log.lines;
    }

    const QStringList goodRun{QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 0")};
    const QStringList failedRun{QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 1")};
    TestFolder folder;
};

TEST_F(ProcessJob, SignalsComeInOrderAndOnlyStartingInsideRun)
{
    ScriptedJob job(QStringLiteral("exit 0"));
    EXPECT_EQ(job.getState(), JobWaiting);
    EXPECT_FALSE(job.getExitCode().has_value());
    EXPECT_EQ(signalsOf(job), goodRun);
    EXPECT_EQ(job.getState(), JobSucceeded);
    EXPECT_EQ(job.getExitCode(), 0);
    EXPECT_TRUE(job.getErrorText().isEmpty());
}

TEST_F(ProcessJob, IsRunningFromLaunchToEnd)
{
    ScriptedJob job(folder.command(QStringLiteral("wait-for"), QStringLiteral("go")));
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    EXPECT_EQ(job.getState(), JobRunning);
    EXPECT_FALSE(job.getExitCode().has_value());
    folder.write(QStringLiteral("go"));
    EXPECT_TRUE(waitUntil([&] { return finished.size() == 1; }));
}

TEST_F(ProcessJob, SlotOnStartingMayStillSetTheCommand)
{
    ScriptedJob job(QStringLiteral("exit 3"));
    QObject::connect(&job, &znAbstractJob::starting, [&] { job.setScript(QStringLiteral("exit 0")); });
    EXPECT_EQ(signalsOf(job), goodRun);
}

TEST_F(ProcessJob, ExitCodeOtherThanZeroIsAFailureWithADescription)
{
    ScriptedJob job(QStringLiteral("exit 7"));
    EXPECT_EQ(signalsOf(job), failedRun);
    EXPECT_EQ(job.getExitCode(), 7);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("The process ended with exit code 7"));
}

TEST_F(ProcessJob, ExitCodeMinusOneIsReadAsMinusOne)
{
    ScriptedJob job(QStringLiteral("exit -1"));
    EXPECT_EQ(signalsOf(job), failedRun);
    EXPECT_EQ(job.getExitCode(), -1);
}

TEST_F(ProcessJob, DeathByASignalLooksLikeNoExitCode)
{
    for (const int number : {SIGILL, SIGTRAP, SIGABRT, SIGKILL, SIGSEGV, SIGXCPU, SIGXFSZ}) {
        ScriptedJob job(QStringLiteral("crash %1").arg(number));
        EXPECT_EQ(signalsOf(job), failedRun);
        EXPECT_EQ(job.getExitCode(), 128 + number);
        EXPECT_EQ(job.getErrorText(), QStringLiteral("The process was ended by signal %1").arg(number));
    }
}

TEST_F(ProcessJob, ProgramThatIsNotThereIsAFailureWithoutExitCode)
{
    for (const QString& command : {QStringLiteral("/no/such/program --help"), QString(), QStringLiteral("   ")}) {
        znProcessJob job(command, nullptr);
        EXPECT_EQ(signalsOf(job), QStringList({QStringLiteral("starting"), QStringLiteral("finished 1")}));
        EXPECT_FALSE(job.getExitCode().has_value());
        EXPECT_TRUE(job.getErrorText().startsWith(QStringLiteral("The process could not be started: ")))
            << job.getErrorText().toStdString();
    }
}

TEST_F(ProcessJob, GoodRunClearsTheErrorTextOfAFailedOne)
{
    ScriptedJob job(QStringLiteral("exit 7"));
    EXPECT_EQ(signalsOf(job), failedRun);
    job.setScript(QStringLiteral("exit 0"));
    EXPECT_EQ(signalsOf(job), goodRun);
    EXPECT_TRUE(job.getErrorText().isEmpty());
}

TEST_F(ProcessJob, ArgumentsArriveUnchangedAndNoShellSeesThem)
{
    const QStringList words{QStringLiteral("two words"), QStringLiteral("say \"hello\""),
                            QStringLiteral("$HOME `id` $(id)"), QStringLiteral("a;b|c>d&e*?~\\"),
                            QString::fromUtf8("Gr\xc3\xb6\xc3\x9f"
                                              "e \xe2\x82\xac")};
    ScriptedJob job(folder.command(QStringLiteral("arguments"), QStringLiteral("words")));
    QString command = scripted(folder.command(QStringLiteral("arguments"), QStringLiteral("words")));
    for (const QString& word : words) {
        command += QLatin1Char(' ') + quoted(word);
    }
    job.setCommand(command);
    EXPECT_EQ(signalsOf(job), goodRun);
    EXPECT_EQ(folder.read(QStringLiteral("words")).split(QLatin1Char('\n')).mid(2, words.size()), words);
}

TEST_F(ProcessJob, StandardInputIsEmpty)
{
    znProcessJob job(QStringLiteral("cat"), nullptr);
    EXPECT_EQ(signalsOf(job), goodRun);
}

TEST_F(ProcessJob, KeepsWhatTheProcessWrote)
{
    ScriptedJob job(QStringLiteral("stdout reading; stderr out of memory; exit 10"));
    EXPECT_TRUE(znJobs::processOutput(job).isEmpty());
    EXPECT_EQ(signalsOf(job), failedRun);
    EXPECT_EQ(znJobs::processOutput(job), QByteArray("reading\nout of memory\n"));
}

TEST_F(ProcessJob, FloodOfErrorsNeitherBlocksTheProcessNorFillsMemory)
{
    ScriptedJob job(QStringLiteral("flood-stderr 50000000; stderr last words"));
    EXPECT_EQ(signalsOf(job), goodRun);
    const QByteArray output = znJobs::processOutput(job);
    EXPECT_EQ(output.size(), 64 * 1024);
    EXPECT_TRUE(output.endsWith("xxxlast words\n"));
}

TEST_F(ProcessJob, RunsAgainAfterAnEnd)
{
    ScriptedJob job(QStringLiteral("exit 4"));
    EXPECT_EQ(signalsOf(job), failedRun);
    job.setScript(QStringLiteral("exit 0"));
    EXPECT_EQ(signalsOf(job), goodRun);
    EXPECT_EQ(job.getExitCode(), 0);
}

TEST_F(ProcessJob, RunsAgainFromASlotOnFinished)
{
    ScriptedJob job(QStringLiteral("exit 4"));
    QSignalSpy finished(&job, &znAbstractJob::finished);
    QObject::connect(&job, &znAbstractJob::finished, [&] {
        if (finished.size() == 1) {
            job.setScript(QStringLiteral("exit 0"));
            job.run();
        }
    });
    job.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 2; }));
    EXPECT_EQ(finished[1][0].value<JobState>(), JobSucceeded);
}

TEST_F(ProcessJob, RunInsideFinishGoesOnWithTheSameRun)
{
    ScriptedJob job(QStringLiteral("exit 5"));
    job.onFinish = [](ScriptedJob& self) {
        if (self.getExitCode() != 5) {
            return self.endRun();
        }
        self.setScript(QStringLiteral("exit 0"));
        self.run();
        EXPECT_EQ(self.getState(), JobRunning);
    };
    EXPECT_EQ(signalsOf(job), QStringList({QStringLiteral("starting"), QStringLiteral("started")}) + goodRun);
}

TEST_F(ProcessJob, RunInsideFinishAfterAFailedStartLaunchesAnew)
{
    ScriptedJob job(QString{});
    job.setCommand(QStringLiteral("/no/such/program"));
    job.onFinish = [](ScriptedJob& self) {
        if (self.getExitCode()) {
            return self.endRun();
        }
        self.setScript(QStringLiteral("exit 0"));
        self.run();
    };
    EXPECT_EQ(signalsOf(job), QStringList({QStringLiteral("starting")}) + goodRun);
}

TEST_F(ProcessJob, RunWhileTheProcessRunsIsRefused)
{
    ScriptedJob job(folder.command(QStringLiteral("wait-for"), QStringLiteral("go")));
    QObject::connect(&job, &znAbstractJob::started, [&] {
        job.run();
        folder.write(QStringLiteral("go"));
    });
    EXPECT_EQ(signalsOf(job), goodRun);
}

TEST_F(ProcessJob, ChildHasThePlainSignalsAndAGroupOfItsOwn)
{
    const auto old = ::signal(SIGTERM, SIG_IGN);
    ScriptedJob job(QStringLiteral("wait 30000"));
    QSignalSpy started(&job, &znAbstractJob::started);
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_TRUE(waitUntil([&] { return started.size() == 1; }));
    ::signal(SIGTERM, old);
    EXPECT_EQ(::getpgid(static_cast<pid_t>(job.processId())), job.processId());
    ::kill(static_cast<pid_t>(job.processId()), SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(job.getExitCode(), 128 + SIGTERM);
}

TEST_F(ProcessJob, WhatAnEndedProcessLeftBehindIsKilled)
{
    ScriptedJob job(folder.command(QStringLiteral("grandchild 60000"), QStringLiteral("pid")));
    EXPECT_EQ(signalsOf(job), goodRun);
    const qint64 grandchild = folder.read(QStringLiteral("pid")).toLongLong();
    ASSERT_GT(grandchild, 0);
    EXPECT_TRUE(waitUntil([&] { return hasEnded(grandchild); }));
}

TEST_F(ProcessJob, DestructionKillsTheProcessAndItsChildrenWithoutASignal)
{
    auto job = std::make_unique<ScriptedJob>(QStringLiteral("ignore-stop;") +
                                             folder.command(QStringLiteral("grandchild 60000"), QStringLiteral("pid")) +
                                             QStringLiteral(";wait 60000"));
    QSignalSpy finished(job.get(), &znAbstractJob::finished);
    job->run();
    ASSERT_TRUE(waitUntil([&] { return !folder.read(QStringLiteral("pid")).isEmpty(); }));
    const qint64 child = job->processId();
    const qint64 grandchild = folder.read(QStringLiteral("pid")).toLongLong();
    job.reset();
    EXPECT_TRUE(hasEnded(child));
    EXPECT_TRUE(waitUntil([&] { return hasEnded(grandchild); }));
    EXPECT_EQ(finished.size(), 0);
}

TEST_F(ProcessJob, MayBeDestroyedByASlotOnEachOfItsSignals)
{
    using Signal = void (znAbstractJob::*)();
    for (const Signal signal : {&znAbstractJob::starting, &znAbstractJob::started}) {
        const QPointer<ScriptedJob> job(new ScriptedJob(QStringLiteral("wait 60000")));
        QObject::connect(job, signal, [job] { delete job; });
        job->run();
        EXPECT_TRUE(waitUntil([&] { return job.isNull(); }));
    }
    const QPointer<ScriptedJob> job(new ScriptedJob(QStringLiteral("exit 0")));
    QObject::connect(job, &znAbstractJob::finished, [job] { delete job; });
    job->run();
    EXPECT_TRUE(waitUntil([&] { return job.isNull(); }));
    drainEvents();
}

TEST_F(ProcessJob, MayBeDestroyedByASlotOnTheFinishedOfAFailedStart)
{
    const QPointer<ScriptedJob> job(new ScriptedJob(QString()));
    job->setCommand(QStringLiteral("/no/such/program"));
    QObject::connect(job, &znAbstractJob::finished, [job] { delete job; });
    job->run();
    EXPECT_TRUE(waitUntil([&] { return job.isNull(); }));
    drainEvents();
}

TEST_F(ProcessJob, RunFromASlotOnStartingIsRefused)
{
    ScriptedJob job(QStringLiteral("exit 0"));
    QObject::connect(&job, &znAbstractJob::starting, &job, &znAbstractJob::run);
    EXPECT_EQ(signalsOf(job), goodRun);
}
