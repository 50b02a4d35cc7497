#include "host/znKernel/znController.h"

#include "standalone/znKernel/UserInterfaceState.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class ControllerTest : public SessionTest
{
protected:
    const zn::kernel::UserInterfaceState& shown() { return m_session.state<zn::kernel::UserInterfaceState>(); }
};

TEST_F(ControllerTest, TheLastCallSaysWhetherTheHostIsBusy)
{
    EXPECT_FALSE(shown().busy);
    znController::setBusy(true, false);
    znController::setBusy(true, true);
    EXPECT_TRUE(shown().busy);
    EXPECT_TRUE(shown().inputBlocked);
    znController::setBusy(false, true);
    EXPECT_FALSE(shown().busy);
    EXPECT_FALSE(shown().inputBlocked);
}

TEST_F(ControllerTest, ABusyHostNeedNotKeepInputAway)
{
    znController::setBusy(true, false);
    EXPECT_TRUE(shown().busy);
    EXPECT_FALSE(shown().inputBlocked);
}

} // namespace
