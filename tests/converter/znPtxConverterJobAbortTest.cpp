#include "tests/converter/ConverterTest.h"

#include "host/znJobProcessing/znJobQueue.h"

#include <QPointer>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace znCADFileTypes;

namespace
{

const char* const updateText = "0 Updating Legacy Stylar File";

class ConversionAbort : public ConverterTest
{
protected:
    ConversionAbort() { set("processes.most", QStringLiteral("2")); }

    /// The lines of a conversion that is aborted as soon as its converter is ready to be.
    QStringList linesOfAborted(SeenConverterJob& job)
    {
        ConversionLog log(job);
        job.run();
        EXPECT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
        job.abort();
        EXPECT_TRUE(waitUntil([&] { return log.ends == 1; }));
        drainEvents();
        QFile::remove(path(QStringLiteral("ready")));
        return log.lines();
    }

    /// A conversion that ends with 4, while the file of an update from an earlier time is there.
    std::unique_ptr<SeenConverterJob> makeJobWithOldUpdate()
    {
        const auto earlier = makeJob(QStringLiteral("old.styl"), "exit 4");
        ConversionLog(*earlier).run();
        QString updated = earlier->getOutputFile();
        updated.replace(QStringLiteral(".osb"), QStringLiteral("-updated.styl"));
        QFile file(updated);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("output scene");
        return makeJob(QStringLiteral("old.styl"), "exit 4");
    }
};

TEST_F(ConversionAbort, OfAMixedAssemblyDoesNotSucceedByItsExitCode)
{
    allowMixedAssemblies(true);
    for (const char* code : {"5", "255", "25", "4", "0"}) {
        const auto job = makeStepJob(QByteArray("output scene\nexit-on-stop ") + code + "\n" +
                                     line("write", QStringLiteral("ready"), "x") + "wait 60000");
        EXPECT_EQ(linesOfAborted(*job), texts({"starting", "started", "finished 1"})) << code;
        EXPECT_EQ(job->getState(), JobFailed) << code;
        EXPECT_EQ(job->getExitCode(), 21) << code;
        EXPECT_EQ(job->getErrorText(), QString()) << code;
    }
}

TEST_F(ConversionAbort, IsNotDescribedAsAFailureOfTheConverter)
{
    for (const char* code : {"7", "5", "1"}) {
        const auto job = makeStepJob("log Error: broken\nexit-on-stop " + QByteArray(code) + "\n" +
                                     line("write", QStringLiteral("ready"), "x") + "wait 60000");
        EXPECT_EQ(linesOfAborted(*job), texts({"starting", "started", "finished 1"})) << code;
        EXPECT_EQ(job->getErrorText(), QString()) << code;
    }
}

TEST_F(ConversionAbort, WhileTheUpdateIsAnnouncedRunsNoConversionOfAnOlderUpdate)
{
    const auto job = makeJobWithOldUpdate();
    ConversionLog log(*job);
    QObject::connect(job.get(), &znAbstractJob::progressChanged, job.get(), [&](unsigned, const QString& text) {
        if (text.startsWith(QStringLiteral("Updating")))
            job->abort();
    });
    EXPECT_EQ(log.run(), texts({"starting", "started", updateText, "finished 1"}));
    EXPECT_EQ(job->getExitCode(), 21);
    EXPECT_TRUE(log.readyFiles.isEmpty());
    EXPECT_EQ(job->getInputFile(), path(QStringLiteral("old.styl")));
}

TEST_F(ConversionAbort, AnUpdateOfAnEarlierJobIsNeverTakenForThatOfThisOne)
{
    const auto job = makeJobWithOldUpdate();
    EXPECT_EQ(ConversionLog(*job).run(), texts({"starting", "started", updateText, "finished 1"}));
}

TEST_F(ConversionAbort, WhileARetryIsAnnouncedRunsNoRetry)
{
    const auto job = makeStepJob("if-external-parts exit 5\noutput scene");
    ConversionLog log(*job);
    QObject::connect(job.get(), &znAbstractJob::progressChanged, job.get(), [&](unsigned, const QString& text) {
        if (text.startsWith(QStringLiteral("No external")))
            job->abort();
    });
    EXPECT_EQ(log.run(), texts({"starting", "started", "0 No external part files found. Retrying with inlined option.",
                                "finished 1"}));
}

TEST_F(ConversionAbort, RunIsRefusedDuringTheUpdate)
{
    const QByteArray second = "if-exists \"" + path(QStringLiteral("first")).toUtf8() + "\" ";
    const auto job =
        makeJob(QStringLiteral("old.styl"), second + line("wait-for", QStringLiteral("go")) + second + "exit 0\n" +
                                                line("write", QStringLiteral("first"), "x") + "exit 4");
    ConversionLog log(*job);
    job->run();
    ASSERT_TRUE(waitUntil([&] { return log.lines().contains(QString::fromUtf8(updateText)); }));
    drainEvents();
    job->run();
    EXPECT_EQ(log.lines(), texts({"starting", "started", updateText}));
    write(QStringLiteral("go"), "x");
    ASSERT_TRUE(waitUntil([&] { return log.ends == 1; }));
    EXPECT_EQ(log.lines(), texts({"starting", "started", updateText, "finished 1"}));
}

TEST_F(ConversionAbort, AJobStartedFromASlotOnOutputFileReadyIsNotTakenAlongByADeletingQueue)
{
    ScriptedJob other(QStringLiteral("exit 0"));
    SignalLog others;
    others.watch(other);
    const QPointer<SeenConverterJob> job(makeStepJob("output scene").release());
    QObject::connect(job, &znPtxConverterJob::outputFileReady, [&] { other.run(); });
    znJobQueue queue;
    queue.setDeleteFinishedOrFailedJobs(true);
    queue.addJob(job);
    queue.startProcessing();
    EXPECT_TRUE(waitUntil([&] { return job.isNull() && others.lines.size() == 3; }));
    EXPECT_EQ(others.lines, texts({"starting", "started", "finished 0"}));
}

TEST_F(ConversionAbort, AMessageBoxInARetryTakesNoOtherJobAlong)
{
    auto job = makeStepJob("if-external-parts exit 5\n" + line("write", QStringLiteral("ready"), "x") + "wait 60000");
    ScriptedJob other(QStringLiteral("wait 60000"));
    znJobQueue queue;
    queue.addJob(&other);
    QSignalSpy otherStarted(&other, &znAbstractJob::started);
    QSignalSpy otherEnds(&other, &znAbstractJob::finished);
    QObject::connect(job.get(), &znAbstractJob::progressChanged, [&](unsigned, const QString& text) {
        if (!text.startsWith(QStringLiteral("No external")))
            return;
        queue.startProcessing();
        waitUntil([&] { return !otherStarted.isEmpty(); });
    });
    job->run();
    ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
    job->abort();
    job.reset();
    drainEvents();
    EXPECT_TRUE(otherEnds.isEmpty());
    EXPECT_EQ(other.getState(), JobRunning);
    EXPECT_FALSE(hasEnded(other.processId()));
}

} // namespace
