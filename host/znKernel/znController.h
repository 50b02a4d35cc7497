#pragma once

#include "host/HostExport.h"

/// Steers the host's window.
class ZN_HOST_EXPORT znController
{
public:
    /// Shows the user that the host is at work, or that it is not any more. Calls do not add up: the last one counts.
    /// @param blockInput keeps the user's input away meanwhile; without meaning when `busy` is false
    static void setBusy(bool busy, bool blockInput);
};
