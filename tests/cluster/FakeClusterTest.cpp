// The road through a cluster with programs that only play Slurm: for machines without it.

#include "tests/cluster/ClusterRun.h"

namespace
{

class FakeClusterTest : public ClusterRun
{
protected:
    FakeClusterTest()
    {
        EXPECT_TRUE(QDir().mkpath(path(text("fake"))));
        m_environment.insert(text("PATH"), text(FAKE_SLURM ":") + qEnvironmentVariable("PATH"));
        m_environment.insert(text("FAKE_FOLDER"), path(text("fake")));
        m_environment.remove(text("SLURM_JOB_ID"));
        makeAssembly(3, 4);
    }

    /// The command lines of srun.
    QStringList steps() const
    {
        QFile file(path(text("fake/steps")));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')).filter(text("--jobid=7 "));
    }

    const QStringList m_cluster{text("--tree"), text("--cluster"), text("slurm")};
};

TEST_F(FakeClusterTest, TheTreeIsThatOfAnImportWithoutTheCluster)
{
    const Ending here = run({text("--tree")});
    const Ending there = run(m_cluster + QStringList{text("--nodes"), text("2")});
    EXPECT_EQ(there.exitCode, 0) << there.errors.constData();
    EXPECT_EQ(there.output, here.output);
    EXPECT_TRUE(there.errors.contains("job 7 of the cluster: 2 nodes, 4 conversions at a time"))
        << there.errors.constData();
    EXPECT_EQ(steps().size(), 1 + 1 + 3) << steps().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(leftovers(), QStringList({text("fake")}));
}

/// Each step locks itself in on its node: nothing of it is told by who starts it.
TEST_F(FakeClusterTest, ConversionsOnTheNodesAreLockedIn)
{
    QProcess converter;
    converter.start(text(ZN_PTXCONVERT), {text("--version")});
    ASSERT_TRUE(converter.waitForFinished());
    if (!converter.readAllStandardOutput().contains("), system calls\n"))
        GTEST_SKIP() << "this kernel has not all of the box";
    const Ending here = run({text("--tree"), text("--set"), text("convert.sandbox=off")});
    const Ending there =
        run(m_cluster + QStringList{text("--nodes"), text("2"), text("--set"), text("convert.sandbox=require")});
    EXPECT_EQ(there.exitCode, 0) << there.errors.constData();
    EXPECT_EQ(there.output, here.output);
    EXPECT_EQ(steps().filter(text(" --sandbox require ")).size(), 1 + 3) << "the assembly and its parts";
}

TEST_F(FakeClusterTest, ASmallerNumberOfJobsStays)
{
    const Ending there = run(m_cluster + QStringList{text("-j"), text("3")});
    EXPECT_EQ(there.exitCode, 0);
    EXPECT_TRUE(there.errors.contains("2 nodes, 3 conversions at a time")) << there.errors.constData();
}

TEST_F(FakeClusterTest, APartWhoseNodeFailedIsConvertedOnceMore)
{
    m_environment.insert(text("FAKE_LOST"), text("part-0001"));
    m_environment.insert(text("FAKE_TIMES"), text("1"));
    const Ending here = run({text("--tree")});
    const Ending there = run(m_cluster);
    EXPECT_EQ(there.exitCode, 0) << there.errors.constData();
    EXPECT_EQ(there.output, here.output);
    EXPECT_TRUE(there.errors.contains("part-0001.stp: the node zn2 failed; it is converted again on another\n"))
        << there.errors.constData();
    const QStringList tries = steps().filter(text("part-0001.stp"));
    ASSERT_EQ(tries.size(), 2);
    EXPECT_TRUE(tries[0].contains(text(" --exact "))) << tries[0].toStdString();
    EXPECT_TRUE(tries[1].startsWith(text("--overlap --nodelist=zn1 --jobid=7 "))) << tries[1].toStdString();
}

TEST_F(FakeClusterTest, APartThatLosesANodeAgainIsMissingWithItsNodes)
{
    m_environment.insert(text("FAKE_LOST"), text("part-0001"));
    const Ending there = run(m_cluster + QStringList{text("--report"), path(text("report.json"))});
    // Both nodes are gone then, so nothing else can run.
    EXPECT_EQ(there.exitCode, 1) << there.errors.constData();
    EXPECT_TRUE(there.errors.contains("part-0001.stp: The node zn1 failed, and before it the node zn2.\n"))
        << there.errors.constData();
    EXPECT_TRUE(there.errors.contains("the allocation of the cluster ended: all of its nodes failed\n"));
    EXPECT_EQ(steps().filter(text("part-0001.stp")).size(), 2);
    QFile report(path(text("report.json")));
    ASSERT_TRUE(report.open(QIODevice::ReadOnly));
    const QByteArray json = report.readAll();
    EXPECT_TRUE(json.contains("The node zn1 failed, and before it the node zn2.")) << json.constData();
    EXPECT_TRUE(json.contains("all of its nodes failed")) << json.constData();
}

TEST_F(FakeClusterTest, APartThatFailsByItselfIsNotTriedAgain)
{
    QFile part(path(text("parts/part-0002.stp")));
    ASSERT_TRUE(part.open(QIODevice::WriteOnly));
    part.write("no step at all\n");
    part.close();
    const Ending there = run(m_cluster);
    EXPECT_EQ(there.exitCode, 3) << there.errors.constData();
    EXPECT_TRUE(there.errors.contains("part-0002.stp: The file is damaged.")) << there.errors.constData();
    EXPECT_EQ(steps().filter(text("part-0002.stp")).size(), 1);
}

TEST_F(FakeClusterTest, AFullQueueIsToldAndCtrlCLeavesIt)
{
    m_environment.insert(text("FAKE_SALLOC"), text("full"));
    QProcess process;
    start(process, m_cluster);
    QByteArray errors;
    ASSERT_TRUE(waitForWords(process, "waiting for the cluster: job 7 queued and waiting for resources\n", errors))
        << errors.constData();
    interrupt(process);
    const Ending end = ending(process);
    EXPECT_EQ(end.exitCode, 130);
    EXPECT_EQ(steps(), QStringList());
    EXPECT_EQ(leftovers(), QStringList({text("fake")}));
}

TEST_F(FakeClusterTest, ARefusalIsTold)
{
    m_environment.insert(text("FAKE_SALLOC"), text("never"));
    const Ending end = run(m_cluster);
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(
        end.errors.contains("znimport: no allocation of the cluster: Job submit/allocate failed: Requested node "
                            "count is a fake\n"))
        << end.errors.constData();
}

TEST_F(FakeClusterTest, ANodeThatDoesNotAnswerEndsTheRun)
{
    m_environment.insert(text("FAKE_HIDDEN"), text("yes"));
    const Ending end = run(m_cluster);
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(end.errors.contains("znimport: the node zn2 did not answer")) << end.errors.constData();
    EXPECT_EQ(steps().size(), 1);
}

TEST_F(FakeClusterTest, WithoutSlurmTheRunSaysSo)
{
    m_environment.insert(text("PATH"), text("/nonexistent"));
    const Ending end = run(m_cluster);
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(end.errors.contains("salloc cannot be started: is Slurm installed here?\n")) << end.errors.constData();
}

TEST_F(FakeClusterTest, WordsForTheAllocationComeFromTheSettingAndTheOptions)
{
    const Ending end = run(m_cluster + QStringList{text("--partition"), text("night"), text("--nodes"), text("9"),
                                                   text("--set"), text("cluster.allocation=--account=design")});
    EXPECT_EQ(end.exitCode, 0) << end.errors.constData();
    QFile words(path(text("fake/salloc")));
    ASSERT_TRUE(words.open(QIODevice::ReadOnly));
    EXPECT_TRUE(words.readAll().startsWith(
        "--no-kill\n--job-name=znimport\n--nodes=9\n--partition=night\n--account=design\nsh\n"));
}

TEST_F(FakeClusterTest, NodesCannotBeAskedForWithinAnAllocation)
{
    m_environment.insert(text("SLURM_JOB_ID"), text("88"));
    const Ending end = run(m_cluster + QStringList{text("--nodes"), text("2")});
    EXPECT_EQ(end.exitCode, 2);
    EXPECT_TRUE(end.errors.contains("--nodes asks for a new allocation, but this is already one (job 88)\n"));
}

} // namespace
