// The parts of the host that its user sees.

#include "host/znKernel/znController.h"
#include "host/znKernel/znOSGWidget.h"
#include "host/znKernel/znTexSearch.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

zn::FrontState& front()
{
    return znStandaloneSession::require().kernel().front;
}

} // namespace

void znController::setBusy(bool busy, bool blockInput)
{
    const zn::TracedCall call("znController::setBusy", busy, blockInput);
    front().busy = busy;
    front().inputBlocked = busy && blockInput;
}

bool znController::call(const std::string& name, znMessage& message, int caller)
{
    const zn::TracedCall traced("znController::call", name, caller);
    return zn::call(znStandaloneSession::require().kernel().controllerCalls, name, message, caller);
}

void znOSGWidget::cancelAntialiasing()
{
    const zn::TracedCall call("znOSGWidget::cancelAntialiasing");
    ++front().cancelledRefinements;
}

void znOSGWidget::showAllMains(bool animated)
{
    const zn::TracedCall call("znOSGWidget::showAllMains", animated);
    ++front().shownWholes;
}

void znTexSearch::setCurrentFile(const char* file)
{
    const zn::TracedCall call("znTexSearch::setCurrentFile", file);
    front().textureBase = file ? file : "";
}

void znTexSearch::clearCurrentFile()
{
    const zn::TracedCall call("znTexSearch::clearCurrentFile");
    front().textureBase.clear();
}
