// An assembly of thousands of parts on a real Slurm; skipped where there is none.

#include "tests/cluster/SlurmRun.h"

namespace
{

class SlurmClusterSlowTest : public SlurmRun
{
};

TEST_F(SlurmClusterSlowTest, TwoThousandPartsThroughOneAndTwoNodesGiveTheTreeOfAnImportWithoutThem)
{
    if (!bringUp())
        GTEST_SKIP() << m_why.constData();
    expectSameTrees(2000, 4000);
}

} // namespace
