#pragma once

#include "host/HostExport.h"
#include "host/znUtils/znMessage.h"

#include <string>

/// Steers the host's window.
class ZN_HOST_EXPORT znController
{
public:
    /// Shows the user that the host is at work, or that it is not any more. Calls do not add up: the last one counts.
    /// @param blockInput keeps the user's input away meanwhile; without meaning when `busy` is false
    static void setBusy(bool busy, bool blockInput);

    /// Calls what goes by `name`: it reads attributes of `message` and puts its answer into it, before this returns.
    /// @param caller told to what is called; 0 stands for the application
    /// @return false when nothing goes by this name or the call failed
    static bool call(const std::string& name, znMessage& message, int caller);
};
