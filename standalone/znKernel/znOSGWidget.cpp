#include "host/znKernel/znOSGWidget.h"

#include "standalone/session/Session.h"
#include "standalone/znKernel/UserInterfaceState.h"
#include "standalone/znUtils/CallTrace.h"

void znOSGWidget::cancelAntialiasing()
{
    const zn::TracedCall call("znOSGWidget::cancelAntialiasing");
    ++zn::Session::require().state<zn::kernel::UserInterfaceState>().cancelledRefinements;
}

void znOSGWidget::showAllMains(bool animated)
{
    const zn::TracedCall call("znOSGWidget::showAllMains", animated);
    ++zn::Session::require().state<zn::kernel::UserInterfaceState>().shownWholes;
}
