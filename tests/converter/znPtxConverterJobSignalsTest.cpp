#include "tests/converter/ConverterTest.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace znCADFileTypes;

namespace
{

/// What a conversion is while its signals come, and the progress that the seed of its progress file causes.
class ConversionSignals : public ConverterTest
{
protected:
    ConversionSignals() { set("processes.most", QStringLiteral("2")); }

    /// The values that the progress file caused to be reported by a run with this one, and its retry with 0.
    QStringList valuesBesideRetry(const QByteArray& firstValue)
    {
        const auto job = makeStepJob(
            line("wait-for", QStringLiteral("go")) + line("if-exists", QStringLiteral("retried"), "progress 0 Merge") +
            line("unless-exists", QStringLiteral("retried"), "progress " + firstValue + " Merge") +
            line("write", QStringLiteral("written"), "x") + line("wait-for", QStringLiteral("seen")) +
            "if-external-parts exit 5\n");
        QStringList values;
        QObject::connect(job.get(), &znAbstractJob::progressChanged, [&](unsigned value, const QString& text) {
            if (!text.startsWith(QStringLiteral("No external")))
                values << QString::number(value);
        });
        int starts = 0;
        QObject::connect(job.get(), &znAbstractJob::started, [&] { ++starts; });
        QSignalSpy finished(job.get(), &znAbstractJob::finished);
        job->run();
        for (int launch = 1; launch <= 2; ++launch) {
            EXPECT_TRUE(waitUntil([&] { return starts == launch; }));
            QFile::remove(path(QStringLiteral("seen")));
            write(QStringLiteral("go"), "x");
            EXPECT_TRUE(waitUntil([&] { return has(QStringLiteral("written")); }));
            drainEvents();
            QFile::remove(path(QStringLiteral("written")));
            QFile::remove(path(QStringLiteral("go")));
            write(QStringLiteral("retried"), "x");
            write(QStringLiteral("seen"), "x");
        }
        EXPECT_TRUE(waitUntil([&] { return finished.size() == 1; }));
        return values;
    }
};

TEST_F(ConversionSignals, AForgivenFailureIsASuccessWhenItsOutputIsReady)
{
    allowMixedAssemblies(true);
    const auto job = makeStepJob("exit 5");
    JobState state = JobWaiting;
    QObject::connect(job.get(), &znPtxConverterJob::outputFileReady, [&] { state = job->getState(); });
    ConversionLog(*job).run();
    EXPECT_EQ(state, JobSucceeded);
}

TEST_F(ConversionSignals, AGoodRunIsASuccessWhenItsOutputIsReady)
{
    const auto job = makeStepJob("output scene");
    JobState state = JobWaiting;
    QObject::connect(job.get(), &znPtxConverterJob::outputFileReady, [&] { state = job->getState(); });
    ConversionLog(*job).run();
    EXPECT_EQ(state, JobSucceeded);
}

TEST_F(ConversionSignals, ARetryDoesNotReportZeroAgain)
{
    EXPECT_EQ(valuesBesideRetry("0"), texts({"0"}));
}

TEST_F(ConversionSignals, ARetryReportsZeroAfterAnotherValue)
{
    QStringList values = valuesBesideRetry("30");
    if (values.first() == QStringLiteral("0"))
        values.removeFirst(); // the seed of the first launch, if the notification came before the converter wrote
    EXPECT_EQ(values, texts({"30", "0"}));
}

} // namespace
