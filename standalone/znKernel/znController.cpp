#include "host/znKernel/znController.h"

#include "standalone/session/Session.h"
#include "standalone/znKernel/ControllerCalls.h"
#include "standalone/znKernel/UserInterfaceState.h"
#include "standalone/znUtils/CallTrace.h"

void znController::setBusy(bool busy, bool blockInput)
{
    const zn::TracedCall call("znController::setBusy", busy, blockInput);
    auto& state = zn::Session::require().state<zn::kernel::UserInterfaceState>();
    state.busy = busy;
    state.inputBlocked = busy && blockInput;
}

bool znController::call(const std::string& name, znMessage& message, int caller)
{
    const zn::TracedCall traced("znController::call", name, caller);
    return zn::Session::require().state<zn::kernel::ControllerCalls>().table.call(name, message, caller);
}
