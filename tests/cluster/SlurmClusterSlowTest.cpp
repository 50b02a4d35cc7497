// An assembly of thousands of parts on a real Slurm; skipped where there is none, and unless it is asked for: 2,000
// parts take more than half an hour of processor time.

#include "tests/cluster/SlurmRun.h"

namespace
{

class SlurmClusterSlowTest : public SlurmRun
{
};

TEST_F(SlurmClusterSlowTest, ManyPartsThroughOneAndTwoNodesGiveTheTreeOfAnImportWithoutThem)
{
    const int parts = qEnvironmentVariableIntValue("ZN_CLUSTER_PARTS");
    if (parts <= 0)
        GTEST_SKIP() << "ZN_CLUSTER_PARTS names no number of parts";
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    expectSameTrees(parts, 2 * parts);
}

} // namespace
