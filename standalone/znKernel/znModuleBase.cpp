#include "host/znKernel/znModuleBase.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

void znModuleBase::sendMessage(znMessage& message, bool toAll)
{
    const zn::TracedCall call("znModuleBase::sendMessage", message.getCode(), toAll);
    for (const auto& module : znStandaloneSession::require().kernel().modules)
        if (module(message) && !toAll)
            return;
}
