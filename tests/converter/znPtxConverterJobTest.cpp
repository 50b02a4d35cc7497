#include "standalone/znUtils/CallTrace.h"
#include "tests/converter/ConverterTest.h"

#include <gtest/gtest.h>

using namespace znCADFileTypes;

namespace
{

class ConverterJob : public ConverterTest
{
protected:
    ~ConverterJob() override { qunsetenv("ZN_CHILD_SCRIPT"); }

    /// The folder into which a conversion with this output directory writes.
    QString folderFor(const QString& outputDir)
    {
        SeenConverterJob job(write(QStringLiteral("part.stp"), "exit 0"), outputDir, nullptr);
        ConversionLog(job).run();
        return QFileInfo(job.getOutputFile()).path();
    }

    struct Wish {
        bool assembly;
        bool entire;
        int most;
        bool referenced;
    };

    /// Whether the converter was given the argument for external parts.
    bool externalParts(const Wish& wish)
    {
        set("processes.most", QString::number(wish.most));
        set("import.Step.referencedFiles", wish.referenced ? QStringLiteral("on") : QStringLiteral("off"));
        const auto job = makeStepJob(line("arguments", QStringLiteral("words")));
        job->setIsAssemblyFile(wish.assembly);
        job->setConvertEntireAssembly(wish.entire);
        return runForArguments(*job) == QStringList({QStringLiteral("--external-parts")});
    }

    /// Runs a job whose script writes its arguments; gives those before the two paths.
    QStringList runForArguments(SeenConverterJob& job)
    {
        QFile::remove(path(QStringLiteral("words")));
        ConversionLog(job).run();
        QStringList words = readLines(QStringLiteral("words"));
        EXPECT_GE(words.size(), 2);
        EXPECT_EQ(words.takeLast(), job.getOutputFile());
        EXPECT_EQ(words.takeLast(), job.getInputFile());
        EXPECT_TRUE(words.isEmpty() || words == QStringList({QStringLiteral("--external-parts")}));
        return words;
    }
};

TEST_F(ConverterJob, WritesIntoTheFolderThatTheCallerNames)
{
    EXPECT_EQ(folderFor(outputFolder()), outputFolder());
}

TEST_F(ConverterJob, ReplacesAFolderOfTheCallerThatDoesNotExist)
{
    EXPECT_EQ(folderFor(path(QStringLiteral("missing"))), m_session.temporaryFolder());
}

TEST_F(ConverterJob, DoesNotAskThePreferenceWhenTheFolderOfTheCallerDoesNotExist)
{
    set("files.temporaryFolder", outputFolder());
    EXPECT_EQ(folderFor(path(QStringLiteral("missing"))), m_session.temporaryFolder());
}

TEST_F(ConverterJob, WritesIntoTheFolderOfThePreferenceWhenTheCallerNamesNone)
{
    set("files.temporaryFolder", outputFolder());
    EXPECT_EQ(folderFor(QString()), outputFolder());
}

TEST_F(ConverterJob, ReplacesAFolderOfThePreferenceThatDoesNotExist)
{
    set("files.temporaryFolder", path(QStringLiteral("missing")));
    EXPECT_EQ(folderFor(QString()), m_session.temporaryFolder());
}

TEST_F(ConverterJob, WritesIntoTheTemporaryFolderWhenNobodyNamesOne)
{
    EXPECT_EQ(folderFor(QString()), m_session.temporaryFolder());
}

TEST_F(ConverterJob, TakesAPreferenceOfAWrongTypeForNone)
{
    m_session.preferences().set("FileIO tmp path", boost::any(42), true);
    EXPECT_EQ(folderFor(QString()), m_session.temporaryFolder());
}

TEST_F(ConverterJob, TellsItsInputFromTheBeginningAndItsOutputFromTheFirstRunOn)
{
    const auto job = makeStepJob("exit 0");
    EXPECT_EQ(job->getInputFile(), path(QStringLiteral("part.stp")));
    EXPECT_EQ(job->getOutputFile(), QString());
    EXPECT_EQ(job->command(), QString());
    EXPECT_EQ(job->getState(), JobWaiting);
    ConversionLog(*job).run();
    EXPECT_TRUE(job->getOutputFile().startsWith(outputFolder() + QStringLiteral("/part-")));
    EXPECT_TRUE(job->getOutputFile().endsWith(QStringLiteral(".osb")));
}

TEST_F(ConverterJob, AsksForExternalPartsOfAnAssemblyWhenProcessesRunInParallel)
{
    for (const int most : {2, 3, 64}) {
        EXPECT_TRUE(externalParts({true, false, most, true})) << most;
        EXPECT_TRUE(externalParts({true, false, most, false})) << most;
    }
}

TEST_F(ConverterJob, AsksForExternalPartsThatNobodyWantsEvenWithOneProcess)
{
    EXPECT_TRUE(externalParts({true, false, 1, false}));
}

TEST_F(ConverterJob, InlinesTheWantedPartsWithOneProcess)
{
    EXPECT_FALSE(externalParts({true, false, 1, true}));
}

TEST_F(ConverterJob, InlinesAllPartsWhenTheEntireAssemblyIsWanted)
{
    for (const int most : {1, 2}) {
        EXPECT_FALSE(externalParts({true, true, most, true})) << most;
        EXPECT_FALSE(externalParts({true, true, most, false})) << most;
    }
}

TEST_F(ConverterJob, AsksForNoExternalPartsOfAFileThatIsNoAssembly)
{
    for (const int most : {1, 2}) {
        EXPECT_FALSE(externalParts({false, false, most, true})) << most;
        EXPECT_FALSE(externalParts({false, false, most, false})) << most;
        EXPECT_FALSE(externalParts({false, true, most, true})) << most;
    }
}

TEST_F(ConverterJob, KnowsAssembliesByTheirNamesUntilItIsToldOtherwise)
{
    set("processes.most", QStringLiteral("2"));
    const QByteArray script = line("arguments", QStringLiteral("words"));
    const QStringList flag{QStringLiteral("--external-parts")};
    EXPECT_EQ(runForArguments(*makeJob(QStringLiteral("a.jt"), script)), flag);
    EXPECT_EQ(runForArguments(*makeJob(QStringLiteral("a.sat"), script)), QStringList());
    const auto told = makeJob(QStringLiteral("b.sat"), script);
    told->setIsAssemblyFile(true);
    EXPECT_EQ(runForArguments(*told), flag);
}

TEST_F(ConverterJob, AFileOfNoKnownTypeHasNoSwitchAndItsReferencedPartsAreWanted)
{
    set("processes.most", QStringLiteral("1"));
    const auto job = makeJob(QStringLiteral("part.unheardof"), line("arguments", QStringLiteral("words")));
    job->setIsAssemblyFile(true);
    EXPECT_EQ(runForArguments(*job), QStringList());
    set("processes.most", QStringLiteral("2"));
    EXPECT_EQ(runForArguments(*job), QStringList({QStringLiteral("--external-parts")}));
}

TEST_F(ConverterJob, SettingsThatChangeBetweenTwoRunsCount)
{
    set("processes.most", QStringLiteral("2"));
    const auto job = makeStepJob(line("arguments", QStringLiteral("words")) + "exit 7");
    EXPECT_EQ(runForArguments(*job), QStringList({QStringLiteral("--external-parts")}));
    EXPECT_EQ(job->getState(), JobFailed);
    set("processes.most", QStringLiteral("1"));
    EXPECT_EQ(runForArguments(*job), QStringList());
    set("import.Step.referencedFiles", QStringLiteral("off"));
    EXPECT_EQ(runForArguments(*job), QStringList({QStringLiteral("--external-parts")}));
}

TEST_F(ConverterJob, NotesAtEachRunWhetherTheInputIsThere)
{
    qputenv("ZN_CHILD_SCRIPT", "exit 3");
    const auto job = makeStepJob("");
    ConversionLog(*job).run();
    EXPECT_TRUE(job->inputPresent());
    QFile::remove(job->getInputFile());
    ConversionLog(*job).run();
    EXPECT_FALSE(job->inputPresent());
    EXPECT_EQ(job->getErrorText(), QStringLiteral("The file is missing or cannot be read."));
    write(QStringLiteral("part.stp"), "");
    ConversionLog(*job).run();
    EXPECT_TRUE(job->inputPresent());
}

TEST_F(ConverterJob, EachRunAsksForItsCommandOnce)
{
    const auto job = makeStepJob("output scene");
    ConversionLog log(*job);
    for (int run = 0; run < 3; ++run) {
        int commands = 0;
        const zn::CallTrace trace(
            [&](const std::string& call) { commands += call.starts_with("znPtxHelper::createProcessCommand"); });
        log.run();
        EXPECT_EQ(commands, 1) << run;
    }
}

TEST_F(ConverterJob, OnlyMechanorFilesMakeMechanorJobs)
{
    EXPECT_TRUE(makeJob(QStringLiteral("a.mca"), "")->isMechanorJob());
    EXPECT_TRUE(makeJob(QStringLiteral("a.MCP"), "")->isMechanorJob());
    EXPECT_FALSE(makeStepJob("")->isMechanorJob());
}

TEST_F(ConverterJob, PathsArriveAtTheConverterUnchanged)
{
    set("processes.most", QStringLiteral("2"));
    const QStringList names = texts({"two  words.stp", "say \"hello\".stp", "it's.stp", "$HOME `id` $(id).stp",
                                     "a;b|c>d&e*?~\\.stp", "größe ÄÖÜ.stp", "壳体.stp", "--script.stp"});
    for (const QString& name : names) {
        const auto job = makeJob(name, line("arguments", QStringLiteral("words")) + "output scene");
        EXPECT_EQ(runForArguments(*job).size(), 1) << name.toStdString();
        EXPECT_TRUE(QFileInfo::exists(job->getOutputFile())) << name.toStdString();
    }
    EXPECT_EQ(outputs().size(), names.size());
}

TEST_F(ConverterJob, AFolderWithAnOddNameArrivesUnchanged)
{
    const QString folder = path(QStringLiteral("out \"put\"; $HOME"));
    ASSERT_TRUE(QDir().mkpath(folder));
    SeenConverterJob job(write(QStringLiteral("part.stp"), "output scene"), folder, nullptr);
    ConversionLog(job).run();
    EXPECT_EQ(job.getState(), JobSucceeded);
    EXPECT_EQ(QFileInfo(job.getOutputFile()).path(), folder);
    EXPECT_TRUE(QFileInfo::exists(job.getOutputFile()));
}

} // namespace
