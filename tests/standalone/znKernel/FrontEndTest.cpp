#include "host/znKernel/znController.h"
#include "host/znKernel/znOSGWidget.h"
#include "host/znKernel/znTexSearch.h"
#include "standalone/znKernel/KernelState.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class FrontEndTest : public SessionTest
{
protected:
    const zn::FrontState& front() const { return m_session.kernel().front; }
};

TEST_F(FrontEndTest, TheLastCallSaysWhetherTheHostIsBusy)
{
    EXPECT_FALSE(front().busy);
    znController::setBusy(true, false);
    znController::setBusy(true, true);
    EXPECT_TRUE(front().busy);
    EXPECT_TRUE(front().inputBlocked);
    znController::setBusy(false, true);
    EXPECT_FALSE(front().busy);
    EXPECT_FALSE(front().inputBlocked);
}

TEST_F(FrontEndTest, ABusyHostNeedNotKeepInputAway)
{
    znController::setBusy(true, false);
    EXPECT_TRUE(front().busy);
    EXPECT_FALSE(front().inputBlocked);
}

TEST_F(FrontEndTest, RefinementsAreCancelledEachTime)
{
    znOSGWidget::cancelAntialiasing();
    znOSGWidget::cancelAntialiasing();
    EXPECT_EQ(front().cancelledRefinements, 2u);
}

TEST_F(FrontEndTest, SearchesForPicturesBeginAtTheFileUntilItIsCleared)
{
    znTexSearch::setCurrentFile("/cad/ä.osb");
    EXPECT_EQ(front().textureBase, "/cad/ä.osb");
    znTexSearch::clearCurrentFile();
    EXPECT_EQ(front().textureBase, "");
    znTexSearch::setCurrentFile("/cad/b.osb");
    znTexSearch::setCurrentFile(nullptr);
    EXPECT_EQ(front().textureBase, "");
}

} // namespace
