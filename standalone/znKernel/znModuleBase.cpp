#include "host/znKernel/znModuleBase.h"

#include "standalone/session/Session.h"
#include "standalone/znKernel/MessageModules.h"
#include "standalone/znUtils/CallTrace.h"

void znModuleBase::sendMessage(znMessage& message, bool toAll)
{
    const zn::TracedCall call("znModuleBase::sendMessage", message.getCode(), toAll);
    for (const auto& module : zn::Session::require().state<zn::kernel::MessageModules>().modules)
        if (module(message) && !toAll)
            return;
}
