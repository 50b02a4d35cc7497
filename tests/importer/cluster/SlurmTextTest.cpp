#include "importer/cluster/SlurmText.h"

#include "standalone/znKernel/ConverterCommand.h"
#include "tests/support/QtPrinters.h"

#include <QProcess>

#include <gmock/gmock.h>

using namespace importer::cluster;

namespace
{

using testing::ElementsAre;

Allocation allocation()
{
    Allocation made;
    made.job = QStringLiteral("417");
    made.nodes = QStringList{QStringLiteral("a1"), QStringLiteral("b2"), QStringLiteral("c3")};
    made.cores = {8, 2, 4};
    made.megabytesANode = 6000;
    return made;
}

TEST(SlurmText, AnAllocationIsReadFromTheLinesOfTheShell)
{
    const auto read = parseAllocation("job=417\ncores=2(x2),16\ntres=cpu=20,mem=24G,node=3,billing=20\n"
                                      "node=rack-1\nnode=rack-2\nnode=big.site\nready\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->job, QStringLiteral("417"));
    EXPECT_EQ(read->nodes,
              QStringList({QStringLiteral("rack-1"), QStringLiteral("rack-2"), QStringLiteral("big.site")}));
    EXPECT_THAT(read->cores, ElementsAre(2, 2, 16));
    EXPECT_EQ(read->megabytesANode, 8192);
    EXPECT_FALSE(read->isBorrowed);
}

TEST(SlurmText, AnAllocationWithoutSharedMemoryHasNoBoundOfMemory)
{
    const auto read = parseAllocation("job=5\ncores=3\nnode=n\nready\n");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->megabytesANode, 0);
}

TEST(SlurmText, LinesThatAreMissingOrWrongMakeNoAllocation)
{
    for (const char* text : {"", "ready\n", "job=\ncores=2\nnode=n\n", "cores=2\nnode=n\n", "job=4\nnode=n\n",
                             "job=4\ncores=2\n", "job=4\ncores=2(x2)\nnode=n\n", "job=4\ncores=two\nnode=n\n",
                             "job=4\ncores=2(x9999999),2(x9999999)\nnode=n\n", "job=4\njob=5\ncores=2\nnode=n\n"})
        EXPECT_FALSE(parseAllocation(text)) << text;
}

TEST(SlurmText, MemoryIsReadInItsUnits)
{
    EXPECT_EQ(parseMemory(QStringLiteral("cpu=4,mem=8000M,node=2")), 8000);
    EXPECT_EQ(parseMemory(QStringLiteral("mem=1.50G")), 1536);
    EXPECT_EQ(parseMemory(QStringLiteral("node=2,mem=2T")), 2097152);
    EXPECT_EQ(parseMemory(QStringLiteral("mem=524288K,cpu=1")), 512);
    EXPECT_EQ(parseMemory(QStringLiteral("mem=77")), 77);
    EXPECT_EQ(parseMemory(QStringLiteral("cpu=4,gres/mem=7")), 0);
    EXPECT_EQ(parseMemory(QStringLiteral("mem=99999999T")), 1000000000);
}

TEST(SlurmText, PlacesFollowFromCoresAndMemoryOfTheNodesThatAreLeft)
{
    EXPECT_EQ(placesIn(allocation(), 1000, {}), 6 + 2 + 4);
    EXPECT_EQ(placesIn(allocation(), 1000, {QStringLiteral("b2")}), 6 + 4);
    EXPECT_EQ(placesIn(allocation(), 9000, {}), 3);
    Allocation unbound = allocation();
    unbound.megabytesANode = 0;
    EXPECT_EQ(placesIn(unbound, 9000, {}), 14);
}

TEST(SlurmText, EachConverterIsAStepWithCoresOfItsOwn)
{
    const QString launcher = launcherFor(allocation(), QStringLiteral("step-9"), {});
    zn::kernel::TemplateValues values{QStringLiteral("/in"), QStringLiteral("/out")};
    values.fields = {{QStringLiteral("cores"), QStringLiteral("2")},
                     {QStringLiteral("memory"), QStringLiteral("333")},
                     {QStringLiteral("minutes"), QStringLiteral("7")}};
    EXPECT_EQ(
        zn::kernel::filledTemplate(launcher, values),
        QStringList({QStringLiteral("srun"), QStringLiteral("--jobid=417"), QStringLiteral("--job-name=step-9"),
                     QStringLiteral("--exact"), QStringLiteral("--nodes=1"), QStringLiteral("--ntasks=1"),
                     QStringLiteral("--cpus-per-task=2"), QStringLiteral("--mem=333M"), QStringLiteral("--time=7"),
                     QStringLiteral("--input=none"), QStringLiteral("--mpi=none"), QStringLiteral("--quiet")}));
}

TEST(SlurmText, AfterALossStepsGoToTheNodesThatAreLeft)
{
    const QString launcher = launcherFor(allocation(), QStringLiteral("step-9"), {QStringLiteral("b2")});
    QStringList chosen;
    for (int i = 0; i < 60; ++i)
        chosen << zn::kernel::filledTemplate(launcher, {QStringLiteral("/in"), QStringLiteral("/out/%1").arg(i)}).at(4);
    EXPECT_EQ(launcher.count(QStringLiteral("--exact")), 0);
    EXPECT_EQ(launcher.count(QStringLiteral("--overlap")), 1);
    const int one = chosen.count(QStringLiteral("--nodelist=a1"));
    const int other = chosen.count(QStringLiteral("--nodelist=c3"));
    EXPECT_EQ(one + other, 60);
    EXPECT_GT(one, 10);
    EXPECT_GT(other, 10);
}

TEST(SlurmText, ACommandMovesToOtherNodesWithItsFilesAsTheyAre)
{
    const QString command = QStringLiteral("srun --jobid=4 --exact --mem=5M conv --exact \"/a b/x\"\"\"y.stp\"");
    const QStringList words = QProcess::splitCommand(onNodes(command, {QStringLiteral("n7")}));
    EXPECT_EQ(words, QStringList({QStringLiteral("srun"), QStringLiteral("--overlap"), QStringLiteral("--nodelist=n7"),
                                  QStringLiteral("--jobid=4"), QStringLiteral("--mem=5M"), QStringLiteral("conv"),
                                  QStringLiteral("--exact"), QStringLiteral("/a b/x\"y.stp")}));
    const QString again = onNodes(zn::kernel::joinCommand(words), {QStringLiteral("n8")});
    EXPECT_EQ(QProcess::splitCommand(again).mid(0, 4),
              QStringList({QStringLiteral("srun"), QStringLiteral("--overlap"), QStringLiteral("--nodelist=n8"),
                           QStringLiteral("--jobid=4")}));
    EXPECT_EQ(onNodes(QStringLiteral("other --exact"), {QStringLiteral("n8")}), QStringLiteral("other --exact"));
}

TEST(SlurmText, AFailedNodeIsKnownByTheWordsOfSrun)
{
    EXPECT_EQ(failedNode("x\nsrun: error: Node failure on zn2\n"), QStringLiteral("zn2"));
    EXPECT_EQ(failedNode("srun: error: Task launch for StepId=2.2 failed on node r1-n07: Communication "
                         "connection failure\nsrun: error: Application launch failed: ...\n"),
              QStringLiteral("r1-n07"));
}

TEST(SlurmText, AnExitCodeOfTheConverterIsNoFailureOfANode)
{
    EXPECT_EQ(failedNode("ptxconvert: damaged\nsrun: error: zn1: task 0: Exited with exit code 7\n"), QString());
    EXPECT_EQ(failedNode("srun: error: zn1: task 0: Segmentation fault\n"), QString());
    EXPECT_EQ(failedNode("ptxconvert: srun: error: Node failure on zn2\n"), QString());
}

TEST(SlurmText, NodesThatLeftTheAllocationAreKnownByTheWordsOfSalloc)
{
    EXPECT_EQ(failedNodes("salloc: Granted job allocation 2\nsalloc: error: Node failure on zn2\n"
                          "salloc: error: Node failure on zn4\n"),
              QStringList({QStringLiteral("zn2"), QStringLiteral("zn4")}));
}

TEST(SlurmText, ARefusalIsTheLastErrorWithoutItsMark)
{
    EXPECT_EQ(refusal("salloc: error: invalid partition specified: nonsense\n"
                      "salloc: error: Job submit/allocate failed: Invalid partition name specified\n"),
              QStringLiteral("Job submit/allocate failed: Invalid partition name specified"));
    EXPECT_EQ(refusal("salloc: Granted job allocation 3\nsalloc: Job allocation 3 has been revoked.\n"),
              QStringLiteral("Job allocation 3 has been revoked."));
    EXPECT_EQ(refusal(""), QString());
}

TEST(SlurmText, AFullQueueAndTooLargeAWishAreTold)
{
    EXPECT_EQ(waitingFor("salloc: Pending job allocation 5\n"), QString());
    EXPECT_EQ(waitingFor("salloc: Pending job allocation 5\nsalloc: job 5 queued and waiting for resources\n"),
              QStringLiteral("job 5 queued and waiting for resources"));
    EXPECT_EQ(waitingFor("salloc: Requested partition configuration not available now\n"
                         "salloc: job 3 queued and waiting for resources\n"),
              QStringLiteral("job 3 queued and waiting for resources; Requested partition configuration not available "
                             "now"));
}

} // namespace
