#include "host/znKernel/znOSGWidget.h"

#include "standalone/znKernel/UserInterfaceState.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class OSGWidgetTest : public SessionTest
{
protected:
    const zn::kernel::UserInterfaceState& shown() { return m_session.state<zn::kernel::UserInterfaceState>(); }
};

TEST_F(OSGWidgetTest, RefinementsAreCancelledEachTime)
{
    znOSGWidget::cancelAntialiasing();
    znOSGWidget::cancelAntialiasing();
    EXPECT_EQ(shown().cancelledRefinements, 2u);
}

} // namespace
