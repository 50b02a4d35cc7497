#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <csignal>

using namespace ptxtest;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

constexpr int Patience = 100000; // ms

/// A file that takes the converter a while in every stage.
std::string textOfParts(int count)
{
    StepText step;
    for (int part = 0; part < count; ++part) {
        StepProduct product = step.product("part " + std::to_string(part));
        for (int i = 0; i < 40; ++i)
            step.box(product, {i * 2.0, part * 2.0, 0}, {i * 2.0 + 1, part * 2.0 + 1, 1});
    }
    return step.text();
}

const std::string& longText()
{
    static const std::string text = textOfParts(40);
    return text;
}

/// Starts a conversion of `longText` and sends it `signal` as soon as its progress file shows one of `stages`.
class Interrupted
{
public:
    Interrupted(ConvertRun& run, int signal, const std::vector<std::string>& stages)
    {
        const std::string input = run.folder().write("long.stp", longText());
        m_process.start(ConvertRun::program(), {QString::fromStdString(input), QString::fromStdString(run.output())});
        QElapsedTimer timer;
        timer.start();
        while (!isAt(run, stages) && m_process.state() != QProcess::NotRunning && timer.elapsed() < Patience)
            m_process.waitForFinished(5);
        m_wasRunning = m_process.state() != QProcess::NotRunning;
        m_sawOutput = QFile::exists(QString::fromStdString(run.output()));
        if (m_wasRunning)
            ::kill(static_cast<pid_t>(m_process.processId()), signal);
        m_process.waitForFinished(Patience);
    }

    bool wasRunning() const { return m_wasRunning; }
    /// Whether the output's name was in use when the signal was sent.
    bool sawOutput() const { return m_sawOutput; }
    int code() const { return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1; }

private:
    static bool isAt(const ConvertRun& run, const std::vector<std::string>& stages)
    {
        const std::string progress = run.progress();
        for (const std::string& stage : stages)
            if (progress.find(stage) != progress.npos)
                return true;
        return false;
    }

    QProcess m_process;
    bool m_wasRunning = false;
    bool m_sawOutput = false;
};

class StopTest : public testing::TestWithParam<std::vector<std::string>>
{
};

} // namespace

TEST_P(StopTest, EndsWith21AndLeavesNoOutput)
{
    ConvertRun run;
    const Interrupted interrupted(run, SIGTERM, GetParam());
    ASSERT_TRUE(interrupted.wasRunning()) << run.progress();
    EXPECT_EQ(interrupted.code(), 21);
    EXPECT_THAT(run.log(), HasSubstr("Error: cancelled in stage "));
    EXPECT_THAT(run.folder().names(), ElementsAre("long.stp", "out.osb.log", "out.osb.tmp"));
}

INSTANTIATE_TEST_SUITE_P(Stages, StopTest,
                         testing::Values(std::vector<std::string>{"ReadAndProcess"},
                                         std::vector<std::string>{"Convert", "ProcessStructure"},
                                         std::vector<std::string>{"Tessellate", "BuildOsgTree"}));

TEST(ConvertSignals, InterruptFromTheTerminalIsACancelToo)
{
    ConvertRun run;
    const Interrupted interrupted(run, SIGINT, {"ReadAndProcess"});
    ASSERT_TRUE(interrupted.wasRunning());
    EXPECT_EQ(interrupted.code(), 21);
}

/// Nobody takes the output of before for that of a run that is at work, and a run that ends early gives it back.
TEST(ConvertSignals, TheOutputOfBeforeIsAwayDuringARunAndBackAfterItsEnd)
{
    for (const int signal : {SIGTERM, SIGSEGV}) {
        ConvertRun run;
        run.folder().write("out.osb", "of before");
        const Interrupted interrupted(run, signal, {"ReadAndProcess", "Convert"});
        ASSERT_TRUE(interrupted.wasRunning());
        EXPECT_FALSE(interrupted.sawOutput()) << signal;
        EXPECT_EQ(contentOf(run.output()), "of before") << signal;
        EXPECT_THAT(run.folder().names(), ElementsAre("long.stp", "out.osb", "out.osb.log", "out.osb.tmp"));
    }
}

/// Only what the kernel does begins the conversion anew.
TEST(ConvertSignals, ACrashThatSomebodyElseWantsEndsTheRunWhilePartsAreAtWork)
{
    ConvertRun run;
    const Interrupted interrupted(run, SIGSEGV, {"Convert", "Tessellate"});
    ASSERT_TRUE(interrupted.wasRunning());
    EXPECT_EQ(interrupted.code(), 128 + SIGSEGV);
    EXPECT_THAT(run.log(), testing::Not(HasSubstr("begins anew")));
    EXPECT_THAT(run.folder().names(), ElementsAre("long.stp", "out.osb.log", "out.osb.tmp"));
}

TEST(ConvertSignals, TheOutputOfBeforeIsBackWhenALimitEndsTheRun)
{
    ConvertRun run;
    run.folder().write("out.osb", "of before");
    EXPECT_EQ(run.convertText("long.stp", longText(), {"--set", "limit.memory=60", "--set", "limit.memory-per-mb=0"}),
              10);
    EXPECT_EQ(contentOf(run.output()), "of before");
    EXPECT_THAT(run.folder().names(), ElementsAre("long.stp", "out.osb", "out.osb.log", "out.osb.tmp"));
}

TEST(ConvertSignals, FatalSignalEndsWith128AndItsNumberAndNamesTheStage)
{
    ConvertRun run;
    const Interrupted interrupted(run, SIGSEGV, {"ReadAndProcess"});
    ASSERT_TRUE(interrupted.wasRunning());
    EXPECT_EQ(interrupted.code(), 128 + SIGSEGV);
    EXPECT_THAT(run.log(), HasSubstr("Error: the conversion crashed (SIGSEGV, signal 11) in stage "));
    EXPECT_THAT(run.folder().names(), ElementsAre("long.stp", "out.osb.log", "out.osb.tmp"));
}

TEST(ConvertLimits, TimeLimitEndsWith11AndSaysHowToRaiseIt)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("long.stp", longText(), {"--set", "limit.time=0.01", "--set", "limit.time-per-mb=0"}),
              11);
    EXPECT_THAT(run.log(), HasSubstr("raise limit.time or limit.time-per-mb, or set limit.time=0 (in stage "));
    EXPECT_THAT(run.folder().names(), ElementsAre("long.stp", "out.osb.log", "out.osb.tmp"));
}

TEST(ConvertLimits, MemoryLimitEndsWith10AndSaysHowToRaiseIt)
{
    ConvertRun run;
    EXPECT_EQ(run.convertText("long.stp", longText(), {"--set", "limit.memory=5", "--set", "limit.memory-per-mb=0"}),
              10);
    EXPECT_THAT(run.log(), HasSubstr("needs more memory than its limit of 5 MB"));
    EXPECT_THAT(run.folder().names(), ElementsAre("long.stp", "out.osb.log", "out.osb.tmp"));
}

TEST(ConvertLimits, FullDiskEndsWith8AndLeavesNoOutput)
{
    ConvertRun run;
    const std::string input = run.folder().write("large.stp", textOfParts(1));
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("ulimit -f 8; exec \"$0\" \"$1\" \"$2\""), ConvertRun::program(),
                 QString::fromStdString(input), QString::fromStdString(run.output())});
    ASSERT_TRUE(shell.waitForFinished(Patience));
    EXPECT_EQ(shell.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(shell.exitCode(), 8) << run.log();
    EXPECT_THAT(run.log(), HasSubstr("Error: cannot write " + run.output()));
    EXPECT_THAT(run.folder().names(), ElementsAre("large.stp", "out.osb.log", "out.osb.tmp"));
}

TEST(ConvertHostile, InstancesThatMultiplyEndWith10)
{
    ConvertRun run;
    StepText step;
    StepProduct product = step.product("box");
    step.box(product, {}, {1, 2, 3});
    for (int level = 0; level < 20; ++level) {
        const StepProduct parent = step.product("level " + std::to_string(level));
        step.place(parent, product, "a", {1.0 * level, 0, 0});
        step.place(parent, product, "b", {0, 1.0 * level, 0});
        product = parent;
    }
    EXPECT_EQ(run.convertText("bomb.stp", step.text(), {"--set", "limit.nodes=100000"}), 10);
    EXPECT_THAT(run.log(), HasSubstr("limit.nodes"));
}

TEST(ConvertHostile, FileCutAnywhereEndsWithACodeAndASentence)
{
    StepText step;
    StepProduct product = step.product("box");
    step.box(product, {}, {1, 2, 3});
    step.color(product.solid, {1, 0.5, 0.25});
    const std::string whole = step.text();
    for (std::size_t part = 1; part < 12; ++part) {
        ConvertRun run;
        const int code = run.convertText("cut.stp", whole.substr(0, whole.size() * part / 12));
        EXPECT_THAT(code, testing::AnyOf(0, 7, 25)) << part;
        if (code != 0) {
            EXPECT_THAT(run.log(), HasSubstr("Error: ")) << part;
        }
    }
}
