#pragma once

#include "host/HostExport.h"
#include "host/znUtils/znMessage.h"

/// A part of the host that others talk to by messages, without knowing it.
class ZN_HOST_EXPORT znModuleBase
{
public:
    /// Hands `message` to the modules of the host, in the order of their registration, each of which may put its answer
    /// into it. Without `toAll` the first one that answers is the last one asked; a message that nobody knows comes
    /// back as it went.
    static void sendMessage(znMessage& message, bool toAll);
};
