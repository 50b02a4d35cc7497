#include "host/znKernel/znPtxHelper.h"
#include "tests/converter/ConverterTest.h"

#include <gtest/gtest.h>

using namespace znCADFileTypes;

namespace
{

/// A Stylar file is the script of its conversion and then of its update; the updated file is the script of its own
/// conversion.
class LegacyUpdate : public ConverterTest
{
protected:
    /// The conversion of a file that ends with 4 at first, and whose update does what `update` says.
    std::unique_ptr<SeenConverterJob> makeLegacyJob(const QByteArray& update) const
    {
        return makeJob(QStringLiteral("old.styl"), "if-exists " + quotedPath("converted") + " " + update + "\n" +
                                                       "if-exists " + quotedPath("converted") + " exit 0\n" +
                                                       line("write", QStringLiteral("converted"), "x") +
                                                       "log Error: old\nexit 4\n");
    }
    /// The conversion whose update writes a file that converts as `script` says.
    std::unique_ptr<SeenConverterJob> makeUpdatedJob(const QByteArray& script) const
    {
        write(QStringLiteral("updated script"), script);
        return makeLegacyJob("output-from " + quotedPath("updated script"));
    }

    /// The conversion whose update writes the file, then "ready", and then hangs.
    std::unique_ptr<SeenConverterJob> makeHangingJob() const
    {
        write(QStringLiteral("updated script"), "output scene");
        const QByteArray when = "if-exists " + quotedPath("converted");
        return makeJob(QStringLiteral("old.styl"), when + " output-from " + quotedPath("updated script") + "\n" + when +
                                                       " write " + quotedPath("ready") + " x\n" + when +
                                                       " wait 60000\n" +
                                                       line("write", QStringLiteral("converted"), "x") + "exit 4");
    }

    QByteArray quotedPath(const char* name) const { return '"' + path(QString::fromUtf8(name)).toUtf8() + '"'; }

    QStringList updatedFiles() const { return outputs().filter(QStringLiteral("-updated.styl")); }

    static QStringList inputsAtStart(SeenConverterJob& job, int runs = 1)
    {
        QStringList inputs;
        ConversionLog log(job);
        QObject context;
        QObject::connect(&job, &znAbstractJob::starting, &context, [&] { inputs << job.getInputFile(); });
        log.run(runs);
        return inputs;
    }
};

TEST_F(LegacyUpdate, AnOldFileIsUpdatedAndTheResultConverted)
{
    const auto job = makeUpdatedJob("output scene");
    ConversionLog log(*job);
    EXPECT_EQ(log.run(), texts({"starting", "started", "0 Updating Legacy Stylar File", "starting", "started", "ready",
                                "finished 0"}));
    EXPECT_EQ(job->getErrorText(), QString());
    EXPECT_EQ(log.readyFiles, QStringList({job->getOutputFile()}));
    EXPECT_TRUE(QFileInfo::exists(job->getOutputFile()));
}

TEST_F(LegacyUpdate, TheUpdateIsToldInTheUsersLanguage)
{
    const Reversing translator("znPtxConverterJob");
    const auto job = makeUpdatedJob("output scene");
    EXPECT_TRUE(ConversionLog(*job).run().contains(QStringLiteral("0 eliF ralytS ycageL gnitadpU")));
}

TEST_F(LegacyUpdate, TheToolIsGivenTheOldFileAndAPathInTheOutputFolder)
{
    const auto job = makeLegacyJob("arguments " + quotedPath("words"));
    ConversionLog(*job).run();
    const QStringList words = readLines(QStringLiteral("words"));
    ASSERT_EQ(words.size(), 2);
    EXPECT_EQ(words[0], path(QStringLiteral("old.styl")));
    EXPECT_EQ(QFileInfo(words[1]).path(), outputFolder());
}

TEST_F(LegacyUpdate, TheCommandComesFromTheUpdatedFileButTheInputStaysTheCallers)
{
    const auto job = makeUpdatedJob(line("arguments", QStringLiteral("words")) + "output scene");
    const QString old = path(QStringLiteral("old.styl"));
    const QStringList inputs = inputsAtStart(*job);
    ASSERT_EQ(updatedFiles().size(), 1);
    const QString updated = outputFolder() + QLatin1Char('/') + updatedFiles().first();
    EXPECT_EQ(inputs, QStringList({old, updated}));
    EXPECT_EQ(job->getInputFile(), old);
    EXPECT_EQ(readLines(QStringLiteral("words")), QStringList({updated, job->getOutputFile()}));
    const QString name = QFileInfo(updated).completeBaseName();
    EXPECT_TRUE(QFileInfo(job->getOutputFile()).fileName().startsWith(name)) << job->getOutputFile().toStdString();
}

TEST_F(LegacyUpdate, TheUpdatedFileIsRemovedWithTheJob)
{
    auto job = makeUpdatedJob("log Warning: odd\noutput scene");
    ConversionLog(*job).run();
    EXPECT_EQ(updatedFiles().size(), 1);
    const QString output = QFileInfo(job->getOutputFile()).fileName();
    job.reset();
    EXPECT_EQ(updatedFiles(), QStringList());
    EXPECT_TRUE(outputs().contains(output));
    EXPECT_EQ(outputs().filter(QStringLiteral(".tmp")), QStringList());
    EXPECT_FALSE(outputs().contains(output + QStringLiteral(".log")));
    EXPECT_TRUE(has(QStringLiteral("old.styl")));
}

/// The run on the old file and the one on the updated file have outputs of different names.
TEST_F(LegacyUpdate, AfterASuccessNoLogOfAnyRunStays)
{
    auto job = makeUpdatedJob("log Warning: odd\noutput scene");
    ConversionLog(*job).run();
    EXPECT_EQ(outputs().filter(QStringLiteral(".log")).size(), 2);
    job.reset();
    EXPECT_EQ(outputs().size(), 1) << outputs().join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(outputs().first().endsWith(QStringLiteral(".osb")));
}

TEST_F(LegacyUpdate, AfterAFailureTheLogsOfAllRunsStay)
{
    auto job = makeUpdatedJob("log Error: odd\nexit 7");
    ConversionLog(*job).run();
    job.reset();
    EXPECT_EQ(outputs().filter(QStringLiteral(".log")).size(), 2);
    EXPECT_EQ(outputs().size(), 2);
}

TEST_F(LegacyUpdate, JobsOfOneOldFileHaveUpdatedFilesOfTheirOwn)
{
    std::string one;
    std::string two;
    const std::string old = path(QStringLiteral("old.styl")).toStdString();
    znPtxHelper::createStylarConvertCommand(old, one, outputFolder().toStdString());
    znPtxHelper::createStylarConvertCommand(old, two, outputFolder().toStdString());
    EXPECT_NE(one, two);
}

TEST_F(LegacyUpdate, AnUpdateThatWritesNothingEndsTheJobWithoutText)
{
    const auto job = makeLegacyJob("exit 0");
    EXPECT_EQ(ConversionLog(*job).run(), texts({"starting", "started", "0 Updating Legacy Stylar File", "finished 1"}));
    EXPECT_EQ(job->getState(), JobFailed);
    EXPECT_EQ(job->getErrorText(), QString());
}

TEST_F(LegacyUpdate, WithoutAToolTheJobEndsWithoutText)
{
    for (const QString& tool : {QString(), QStringLiteral("/no/such/tool")}) {
        set("converter.updateProgram", tool);
        const auto job = makeJob(QStringLiteral("old.styl"), "exit 4");
        EXPECT_EQ(ConversionLog(*job).run(),
                  texts({"starting", "started", "0 Updating Legacy Stylar File", "finished 1"}));
        EXPECT_EQ(job->getErrorText(), QString());
    }
}

TEST_F(LegacyUpdate, AToolThatFailsAfterWritingCounts)
{
    write(QStringLiteral("updated script"), "output scene");
    const QByteArray when = "if-exists " + quotedPath("converted");
    const auto job = makeJob(QStringLiteral("old.styl"),
                             when + " output-from " + quotedPath("updated script") + "\n" + when + " exit 9\n" +
                                 line("write", QStringLiteral("converted"), "x") + "exit 4");
    EXPECT_EQ(ConversionLog(*job).run(), texts({"starting", "started", "0 Updating Legacy Stylar File", "starting",
                                                "started", "ready", "finished 0"}));
}

TEST_F(LegacyUpdate, AFailureOfTheUpdatedFileIsDescribed)
{
    const auto job = makeUpdatedJob("exit 7");
    EXPECT_EQ(ConversionLog(*job).run(),
              texts({"starting", "started", "0 Updating Legacy Stylar File", "starting", "started", "finished 1"}));
    EXPECT_EQ(job->getErrorText(), QStringLiteral("The file is damaged."));
}

TEST_F(LegacyUpdate, AnUpdatedFileThatIsStillOldIsUpdatedAgainFromTheCallersFile)
{
    const QByteArray again = "if-exists " + quotedPath("again");
    const auto job = makeUpdatedJob(again + " output scene\n" + again + " exit 0\n" +
                                    line("write", QStringLiteral("again"), "x") + "exit 4");
    EXPECT_EQ(ConversionLog(*job).run(),
              texts({"starting", "started", "0 Updating Legacy Stylar File", "starting", "started",
                     "0 Updating Legacy Stylar File", "starting", "started", "ready", "finished 0"}));
    EXPECT_EQ(updatedFiles().size(), 1);
    EXPECT_EQ(job->getInputFile(), path(QStringLiteral("old.styl")));
}

TEST_F(LegacyUpdate, OfAFileThatMayBeMixedEndsTheJobTwice)
{
    allowMixedAssemblies(true);
    const auto job = makeUpdatedJob("output scene");
    ConversionLog log(*job);
    EXPECT_EQ(log.run(2), texts({"starting", "started", "0 Updating Legacy Stylar File", "ready", "finished 0",
                                 "starting", "started", "ready", "finished 0"}));
    ASSERT_EQ(log.readyFiles.size(), 2);
    EXPECT_NE(log.readyFiles[0], log.readyFiles[1]);
    EXPECT_FALSE(QFileInfo::exists(log.readyFiles[0]));
    EXPECT_EQ(log.readyFiles[1], job->getOutputFile());
}

TEST_F(LegacyUpdate, AbortDuringTheUpdateEndsTheJob)
{
    const auto job = makeLegacyJob("wait-for " + quotedPath("never"));
    ConversionLog log(*job);
    QObject::connect(job.get(), &znAbstractJob::progressChanged, job.get(), &znAbstractJob::abort,
                     Qt::QueuedConnection);
    EXPECT_EQ(log.run(), texts({"starting", "started", "0 Updating Legacy Stylar File", "finished 1"}));
}

TEST_F(LegacyUpdate, AJobThatGoesDuringTheUpdateLeavesNoUpdatedFile)
{
    auto job = makeHangingJob();
    job->run();
    ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
    EXPECT_EQ(updatedFiles().size(), 1);
    job.reset();
    drainEvents();
    EXPECT_EQ(updatedFiles(), QStringList());
}

TEST_F(LegacyUpdate, AbortAfterTheUpdateHasWrittenRunsNoConversion)
{
    auto job = makeHangingJob();
    ConversionLog log(*job);
    job->run();
    ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
    job->abort();
    ASSERT_TRUE(waitUntil([&] { return log.ends == 1; }));
    drainEvents();
    EXPECT_EQ(log.lines(), texts({"starting", "started", "0 Updating Legacy Stylar File", "finished 1"}));
    EXPECT_EQ(job->getInputFile(), path(QStringLiteral("old.styl")));
    job.reset();
    EXPECT_EQ(outputs(), QStringList());
}

} // namespace
