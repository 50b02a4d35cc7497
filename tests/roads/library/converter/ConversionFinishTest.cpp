#include "tests/converter/ConverterTest.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace znCADFileTypes;

namespace
{

/// How a run of a job with the assembly flag ends.
struct Ending {
    const char* name;
    const char* script;
    const char* file;
    bool mixed;
    std::vector<const char*> after; ///< what follows "starting" and "started"
    const char* text = "";
    bool assembly = true;
};

void PrintTo(const Ending& ending, std::ostream* stream)
{
    *stream << ending.name;
}

class ConversionEnding : public ConverterTest, public testing::WithParamInterface<Ending>
{
};

TEST_P(ConversionEnding, FollowsFromTheExitCodeAndTheFile)
{
    const Ending& ending = GetParam();
    set("processes.most", QStringLiteral("2"));
    allowMixedAssemblies(ending.mixed);
    const auto job = makeJob(QString::fromUtf8(ending.file), ending.script);
    job->setIsAssemblyFile(ending.assembly);
    QStringList expected = texts({"starting", "started"});
    for (const char* line : ending.after)
        expected << QString::fromUtf8(line);
    ConversionLog log(*job);
    QObject::connect(job.get(), &znPtxConverterJob::outputFileReady, job.get(),
                     [&] { EXPECT_EQ(job->getState(), JobSucceeded) << "the state stands before the result is told"; });
    EXPECT_EQ(log.run(), expected);
    EXPECT_EQ(job->getState(), expected.last() == QStringLiteral("finished 0") ? JobSucceeded : JobFailed);
    EXPECT_EQ(job->getErrorText(), QString::fromUtf8(ending.text));
    for (const QString& file : log.readyFiles)
        EXPECT_EQ(file, job->getOutputFile());
}

const char* const retryText = "0 No external part files found. Retrying with inlined option.";
const char* const noParts = "The file has no external parts.";
const char* const oldFile = "The file is of an old version and needs the update tool.";
const char* const nothing = "There is nothing to import in the file.";

INSTANTIATE_TEST_SUITE_P(
    Rows, ConversionEnding,
    testing::Values(
        Ending{"GoodWithOutput", "output scene", "a.stp", false, {"ready", "finished 0"}},
        Ending{"GoodWithoutOutput", "exit 0", "a.stp", false, {"finished 0"}},
        Ending{"GoodMixedWithoutOutput", "exit 0", "a.stp", true, {"finished 0"}},
        Ending{"Code21", "exit 21", "a.stp", false, {"finished 1"}},
        Ending{"Code21Mixed", "exit 21", "a.stp", true, {"finished 1"}},
        Ending{"Code21Stylar", "exit 21", "a.styl", false, {"finished 1"}},
        Ending{"Code21MixedStylar", "exit 21", "a.styl", true, {"finished 1"}},
        Ending{"Code21WithOutput", "output scene\nexit 21", "a.stp", true, {"finished 1"}},
        Ending{"Code25Mixed", "exit 25", "a.stp", true, {"finished 1"}},
        Ending{"Code25MixedStylar", "exit 25", "a.styl", true, {"finished 1"}},
        Ending{"Code25", "exit 25", "a.stp", false, {"finished 1"}, nothing},
        Ending{"Code25Stylar", "exit 25", "a.styl", false, {"finished 1"}, nothing},
        Ending{"Code25MixedWithoutFlag", "exit 25", "a.stp", true, {"finished 1"}, "", false},
        Ending{"Code5Mixed", "exit 5", "a.stp", true, {"ready", "finished 0"}},
        Ending{"Code5MixedStylar", "exit 5", "a.styl", true, {"ready", "finished 0"}},
        Ending{"CodeMinus1Mixed", "exit -1", "a.stp", true, {"ready", "finished 0"}},
        Ending{"Code255Mixed", "exit 255", "a.stp", true, {"ready", "finished 0"}},
        Ending{"Code5RetryGood",
               "unless-external-parts output scene\nif-external-parts exit 5",
               "a.stp",
               false,
               {retryText, "starting", "started", "ready", "finished 0"}},
        Ending{"Code255RetryGood",
               "unless-external-parts output scene\nif-external-parts exit 255",
               "a.stp",
               false,
               {retryText, "starting", "started", "ready", "finished 0"}},
        Ending{"Code5StylarRetryGood",
               "if-external-parts exit 5",
               "a.styl",
               false,
               {retryText, "starting", "started", "finished 0"}},
        Ending{"Code5Twice", "exit 5", "a.stp", false, {retryText, "starting", "started", "finished 1"}, noParts},
        Ending{"CodeMinus1Twice", "exit -1", "a.stp", false, {retryText, "starting", "started", "finished 1"}, noParts},
        Ending{"Code5ThenOther",
               "if-external-parts exit 5\nexit 7",
               "a.stp",
               false,
               {retryText, "starting", "started", "finished 1"},
               "The file is damaged."},
        Ending{"Code5ThenCode21",
               "if-external-parts exit 5\nexit 21",
               "a.stp",
               false,
               {retryText, "starting", "started", "finished 1"}},
        Ending{"Code5WithoutFlag", "exit 5", "a.stp", false, {"finished 1"}, noParts, false},
        Ending{"Code5MixedWithoutFlag", "exit 5", "a.stp", true, {"finished 1"}, noParts, false},
        Ending{"CodeMinus1WithoutFlag", "exit -1", "a.stp", false, {"finished 1"}, noParts, false},
        Ending{"Code4", "exit 4", "a.stp", false, {"finished 1"}, oldFile},
        Ending{"Code4Mixed", "exit 4", "a.stp", true, {"finished 1"}, oldFile},
        Ending{"Code7", "exit 7", "a.stp", false, {"finished 1"}, "The file is damaged."},
        Ending{"Code7Mixed", "exit 7", "a.stp", true, {"finished 1"}, "The file is damaged."},
        Ending{"Code7MixedStylar", "exit 7", "a.styl", true, {"finished 1"}, "The file is damaged."},
        Ending{"Code200", "exit 200", "a.stp", false, {"finished 1"}, "The converter ended with the exit code 200."},
        Ending{"Signal4IsNotCode4", "crash 4", "a.styl", false, {"finished 1"}, "The converter crashed (signal 4)."},
        Ending{"Signal5IsNotCode5", "crash 5", "a.stp", false, {"finished 1"}, "The converter crashed (signal 5)."},
        Ending{"Signal5MixedIsNotCode5", "crash 5", "a.stp", true, {"finished 1"}, "The converter crashed (signal 5)."},
        Ending{"Signal25MixedIsNotCode25",
               "crash 25",
               "a.stp",
               true,
               {"finished 1"},
               "The converter crashed (signal 25)."}),
    [](const testing::TestParamInfo<Ending>& row) { return std::string(row.param.name); });

class ConversionFinish : public ConverterTest
{
protected:
    ConversionFinish() { set("processes.most", QStringLiteral("2")); }

    /// The endings of the files that exist when a job with this script has ended and is gone, in order.
    QStringList leftBy(const QByteArray& script)
    {
        auto job = makeStepJob(script);
        ConversionLog(*job).run();
        const QString output = QFileInfo(job->getOutputFile()).fileName();
        job.reset();
        QStringList left = outputs();
        left.replaceInStrings(output, QStringLiteral("output"));
        return left;
    }
};

TEST_F(ConversionFinish, AJobThatEndedWellLeavesOnlyItsOutput)
{
    EXPECT_EQ(leftBy("progress 10 Merge\nlog Warning: odd\noutput scene"), texts({"output"}));
}

TEST_F(ConversionFinish, AFailedJobLeavesItsLog)
{
    EXPECT_EQ(leftBy("progress 10 Merge\nlog Error: odd\nexit 7"), texts({"output.log"}));
}

TEST_F(ConversionFinish, AFailedJobLeavesWhatItHasConverted)
{
    EXPECT_EQ(leftBy("output scene\nexit 7"), texts({"output"}));
}

TEST_F(ConversionFinish, ACrashLeavesTheLog)
{
    EXPECT_EQ(leftBy("progress 10 Merge\nlog reading\ncrash 11"), texts({"output.log"}));
}

TEST_F(ConversionFinish, ARetryThatSucceedsRemovesTheLogOfBothRuns)
{
    EXPECT_EQ(leftBy("log Error: no parts\nif-external-parts exit 5\noutput scene"), texts({"output"}));
}

TEST_F(ConversionFinish, AJobThatNeverRanRemovesNothing)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_folder.path()));
    write(QStringLiteral(".log"), "mine");
    write(QStringLiteral(".tmp"), "mine");
    makeStepJob("").reset();
    EXPECT_TRUE(has(QStringLiteral(".log")));
    EXPECT_TRUE(has(QStringLiteral(".tmp")));
    EXPECT_TRUE(has(QStringLiteral("part.stp")));
    EXPECT_TRUE(QDir::setCurrent(before));
}

TEST_F(ConversionFinish, TheDescriptionQuotesTheLog)
{
    const auto job = makeStepJob("log Error: bad face\nexit 7");
    ConversionLog(*job).run();
    EXPECT_EQ(job->getErrorText(),
              QStringLiteral("The file is damaged. bad face [log: %1.log]").arg(job->getOutputFile()));
}

TEST_F(ConversionFinish, TheOutputIsReadyBeforeTheJobIsFinished)
{
    const auto job = makeStepJob("output scene");
    ConversionLog log(*job);
    EXPECT_EQ(log.run(), texts({"starting", "started", "ready", "finished 0"}));
    EXPECT_EQ(log.readyFiles, QStringList({job->getOutputFile()}));
}

TEST_F(ConversionFinish, AConverterThatCannotBeStartedIsAFailureWithADescription)
{
    set("converter.program", QStringLiteral("/no/such/converter"));
    for (const bool mixed : {false, true}) {
        allowMixedAssemblies(mixed);
        const auto job = makeStepJob("");
        EXPECT_EQ(ConversionLog(*job).run(), texts({"starting", "finished 1"}));
        EXPECT_EQ(job->getErrorText(), QStringLiteral("The converter could not be started."));
    }
}

TEST_F(ConversionFinish, AfterARetryTheJobStaysInlinedAndTellsThatOutput)
{
    const auto job =
        makeStepJob(line("arguments", QStringLiteral("words")) + "if-external-parts exit 5\noutput inlined");
    ConversionLog log(*job);
    log.run();
    const QStringList first{QStringLiteral("--external-parts"), job->getInputFile(), job->getOutputFile()};
    const QStringList inlined{job->getInputFile(), job->getOutputFile()};
    EXPECT_EQ(readLines(QStringLiteral("words")), first + inlined);
    EXPECT_EQ(readLines(QStringLiteral("out put/") + QFileInfo(job->getOutputFile()).fileName()), texts({"inlined"}));
    log.run();
    EXPECT_EQ(readLines(QStringLiteral("words")), first + inlined + inlined);
    EXPECT_EQ(log.lines().filter(QStringLiteral("Retrying")).size(), 1);
}

TEST_F(ConversionFinish, TheRetryIsToldInTheUsersLanguage)
{
    set("processes.most", QStringLiteral("2"));
    const Reversing translator("znPtxConverterJob");
    const auto job = makeStepJob("if-external-parts exit 5\noutput inlined");
    const QStringList lines = ConversionLog(*job).run();
    EXPECT_TRUE(lines.contains(QStringLiteral("0 .noitpo denilni htiw gniyrteR .dnuof selif trap lanretxe oN")));
}

TEST_F(ConversionFinish, ASettingThatChangesBeforeTheRetryCounts)
{
    const auto job = makeStepJob(line("if-external-parts append", QStringLiteral("first"), "x") +
                                 "if-external-parts exit 5\n" + line("append", QStringLiteral("other"), "x"));
    const QString other = QString::fromUtf8(ZN_SCRIPTED_CHILD) + QStringLiteral("-missing");
    ConversionLog log(*job);
    QObject::connect(job.get(), &znAbstractJob::progressChanged, [&] { set("converter.program", other); });
    EXPECT_EQ(log.run(), texts({"starting", "started", retryText, "starting", "finished 1"}));
    EXPECT_TRUE(has(QStringLiteral("first")));
    EXPECT_FALSE(has(QStringLiteral("other")));
}

TEST_F(ConversionFinish, AnAbortedJobFailsAndLeavesOnlyTheLog)
{
    auto job =
        makeStepJob("progress 10 Merge\nlog reading\n" + line("write", QStringLiteral("ready"), "x") + "wait 60000");
    ConversionLog log(*job);
    job->run();
    ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
    job->abort();
    ASSERT_TRUE(waitUntil([&] { return log.ends == 1; }));
    EXPECT_EQ(log.lines().last(), QStringLiteral("finished 1"));
    const QString logName = QFileInfo(job->getOutputFile()).fileName() + QStringLiteral(".log");
    job.reset();
    EXPECT_EQ(outputs(), QStringList({logName}));
}

TEST_F(ConversionFinish, AnAbortedJobIsNotRetried)
{
    const auto job = makeStepJob("exit-on-stop 5\n" + line("append", QStringLiteral("ready"), "x") + "wait 60000");
    ConversionLog log(*job);
    job->run();
    ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
    job->abort();
    ASSERT_TRUE(waitUntil([&] { return log.ends == 1; }));
    drainEvents();
    EXPECT_EQ(log.lines().filter(QStringLiteral("starting")).size(), 1);
    EXPECT_EQ(log.lines().last(), QStringLiteral("finished 1"));
}

TEST_F(ConversionFinish, AJobThatIsDestroyedWhileItRunsLeavesNoProgressFile)
{
    auto job =
        makeStepJob("output scene\nprogress 10 Merge\n" + line("write", QStringLiteral("ready"), "x") + "wait 60000");
    job->run();
    ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
    const QString output = QFileInfo(job->getOutputFile()).fileName();
    job.reset();
    EXPECT_EQ(outputs(), QStringList({output}));
}

/// A process that is about to write when its job goes must not write once the job is gone.
TEST_F(ConversionFinish, AProcessThatWritesAllTheTimeLeavesNoProgressFileBehindItsJob)
{
    QByteArray script = line("write", QStringLiteral("ready"), "x");
    for (int time = 0; time < 3000; ++time)
        script += "progress-replaced 10 Merge\n";
    for (int deletion = 0; deletion < 30; ++deletion) {
        QFile::remove(path(QStringLiteral("ready")));
        auto job = makeStepJob(script + "wait 60000");
        job->run();
        ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")); }));
        job.reset();
        EXPECT_EQ(outputs().filter(QStringLiteral(".osb.tmp")), QStringList()) << deletion;
    }
}

TEST_F(ConversionFinish, AJobThatGoesWhileItsProcessRunsSaysNothingMore)
{
    auto job = makeStepJob(line("write", QStringLiteral("ready"), "x") + "wait 60000");
    ConversionLog log(*job);
    job->run();
    // The process may write before the event loop has told that it runs.
    ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("ready")) && log.lines().size() == 2; }));
    job.reset();
    EXPECT_EQ(log.lines(), texts({"starting", "started"}));
}

TEST_F(ConversionFinish, JobsOfOneFileInOneFolderHaveOutputsOfTheirOwn)
{
    write(QStringLiteral("part.stp"), line("wait-for", QStringLiteral("go")) + "output scene");
    std::vector<std::unique_ptr<SeenConverterJob>> jobs;
    QSet<QString> names;
    int ends = 0;
    for (int count = 0; count < 12; ++count) {
        jobs.push_back(std::make_unique<SeenConverterJob>(path(QStringLiteral("part.stp")), outputFolder(), nullptr));
        QObject::connect(jobs.back().get(), &znAbstractJob::finished, [&] { ++ends; });
        jobs.back()->run();
        names.insert(jobs.back()->getOutputFile());
    }
    EXPECT_EQ(names.size(), 12);
    write(QStringLiteral("go"), "");
    ASSERT_TRUE(waitUntil([&] { return ends == 12; }));
    for (const auto& job : jobs)
        EXPECT_EQ(job->getState(), JobSucceeded);
    jobs.clear();
    EXPECT_EQ(outputs().size(), 12);
}

/// As a job of another process does it, which has the plain name by its progress file.
TEST_F(ConversionFinish, ANameThatAnotherProcessHasIsLeftToIt)
{
    const auto first = makeStepJob("output scene");
    ConversionLog(*first).run();
    const QString plain = first->getOutputFile();
    SeenConverterJob second(path(QStringLiteral("part.stp")), outputFolder(), nullptr);
    ConversionLog(second).run();
    EXPECT_EQ(second.getOutputFile(), QString(plain).replace(QStringLiteral(".osb"), QStringLiteral("-2.osb")));
}

TEST_F(ConversionFinish, ARetryKeepsTheNameAndTheNameIsFreeAfterTheJob)
{
    for (int time = 0; time < 2; ++time) {
        auto job = makeStepJob("if-external-parts exit 5\noutput inlined");
        QSet<QString> names;
        ConversionLog log(*job);
        QObject::connect(job.get(), &znAbstractJob::started, [&] { names.insert(job->getOutputFile()); });
        log.run();
        EXPECT_EQ(names.size(), 1);
        EXPECT_EQ(outputs().filter(QStringLiteral(".tmp")).size(), 1);
        job.reset();
        EXPECT_EQ(outputs().size(), 1);
        EXPECT_FALSE(outputs().first().endsWith(QStringLiteral("-2.osb")));
    }
}

} // namespace
