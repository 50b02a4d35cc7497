// The tool on a real Slurm; skipped where there is none.

#include "tests/cluster/SlurmRun.h"

namespace
{

class SlurmClusterTest : public SlurmRun
{
};

TEST_F(SlurmClusterTest, FortyPartsThroughOneAndTwoNodesGiveTheTreeOfAnImportWithoutThem)
{
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    expectSameTrees(40, 100);
}

TEST_F(SlurmClusterTest, CtrlCInTheMiddleLeavesNothingBehind)
{
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    makeAssembly(300, 300);
    QProcess process;
    start(process, on(2) + QStringList{text("-o"), path(text("out.glb"))});
    QByteArray errors;
    ASSERT_TRUE(waitForWords(process, "Loading\n", errors)) << errors.constData();
    ASSERT_TRUE(waitForSteps(2));
    interrupt(process);
    EXPECT_EQ(ending(process).exitCode, 130);
    EXPECT_TRUE(queueRunsEmpty());
    EXPECT_EQ(stepsRunning(), 0);
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(SlurmClusterTest, AnAllocationOfOneOwnIsTakenAndLeft)
{
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    makeAssembly(6, 6);
    const Ending here = run({text("--tree")});
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.setProcessEnvironment(m_environment);
    process.start(text("salloc"), {text("-N2"), text("--exclusive"), text("sh"), text("-c"),
                                   text("\"$@\"; echo \"still $(squeue -h -j $SLURM_JOB_ID -o %T)\" >&2"), text("sh"),
                                   text(ZNIMPORT), m_assembly, text("--set"), text("converter.program=" ZN_PTXCONVERT),
                                   text("--tree"), text("--cluster"), text("slurm")});
    const Ending there = ending(process);
    EXPECT_EQ(there.output, here.output) << there.errors.constData();
    EXPECT_TRUE(there.errors.contains("2 nodes, 4 conversions at a time")) << there.errors.constData();
    EXPECT_TRUE(there.errors.contains("still RUNNING\n")) << there.errors.constData();
}

TEST_F(SlurmClusterTest, ANodeThatDiesCostsItsPartsASecondTryAndNothingElse)
{
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    makeAssembly(120, 120);
    const Ending here = run({text("--tree")});
    QProcess process;
    start(process, on(2) + QStringList{text("--report"), path(text("report.json"))});
    QByteArray errors;
    ASSERT_TRUE(waitForWords(process, "Loading\n", errors)) << errors.constData();
    ASSERT_TRUE(waitForSteps(3));
    EXPECT_EQ(cluster(text("kill-node"), {text("2")}), 0);
    const Ending there = ending(process);
    EXPECT_EQ(there.exitCode, 0) << there.errors.constData();
    EXPECT_TRUE(there.output == here.output);
    EXPECT_TRUE(there.errors.contains(".stp: the node zn2 failed; it is converted again on another\n"))
        << there.errors.constData();
    QFile report(path(text("report.json")));
    ASSERT_TRUE(report.open(QIODevice::ReadOnly));
    EXPECT_TRUE(report.readAll().contains("the node zn2 failed"));
    EXPECT_TRUE(queueRunsEmpty());
}

TEST_F(SlurmClusterTest, AFullQueueIsToldAndCtrlCLeavesIt)
{
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    makeAssembly(2, 2);
    QProcess other;
    other.setProcessEnvironment(m_environment);
    other.start(text("salloc"), {text("-N2"), text("--exclusive"), text("cat")});
    QByteArray granted;
    ASSERT_TRUE(waitForWords(other, "Granted", granted)) << granted.constData();
    QProcess process;
    start(process, on(1));
    QByteArray errors;
    EXPECT_TRUE(waitForWords(process, "queued and waiting for resources\n", errors)) << errors.constData();
    EXPECT_TRUE(errors.contains("assembly.stp: waiting for the cluster: job ")) << errors.constData();
    interrupt(process);
    EXPECT_EQ(ending(process).exitCode, 130);
    other.closeWriteChannel();
    EXPECT_TRUE(other.waitForFinished(30000));
    EXPECT_TRUE(queueRunsEmpty());
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(SlurmClusterTest, AWrongPartitionIsTold)
{
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    makeAssembly(2, 2);
    const Ending end = run(on(1) + QStringList{text("--partition"), text("nonsense")});
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(end.errors.contains("znimport: no allocation of the cluster: Job submit/allocate failed: Invalid "
                                    "partition name specified\n"))
        << end.errors.constData();
}

TEST_F(SlurmClusterTest, AnOutputFolderThatIsNotSharedIsToldWithTheNode)
{
    const QString hidden = path(text("converted"));
    ASSERT_TRUE(QDir().mkpath(hidden));
    if (!bringUp({text("--hide"), text("2:") + hidden}))
        GTEST_SKIP() << m_why.constData();
    makeAssembly(2, 2);
    const Ending end = run(on(2) + QStringList{text("--set"), text("files.temporaryFolder=") + hidden});
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(end.errors.contains("is not shared with the cluster: what is written there on one side does not arrive "
                                    "on the other (node zn2)\n"))
        << end.errors.constData();
    EXPECT_TRUE(queueRunsEmpty());
}

TEST_F(SlurmClusterTest, AnInputFolderThatIsNotSharedIsToldWithTheNode)
{
    ASSERT_TRUE(QDir().mkpath(path(text("parts"))));
    if (!bringUp({text("--hide"), text("1:") + path(text("parts"))}))
        GTEST_SKIP() << m_why.constData();
    makeAssembly(2, 2);
    const Ending end = run(on(2));
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(end.errors.contains("assembly.stp is not shared with the cluster: the node zn1 does not see this file "
                                    "there\n"))
        << end.errors.constData();
}

} // namespace
