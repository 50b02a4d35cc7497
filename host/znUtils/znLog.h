#pragma once

#include "host/HostExport.h"

/// The log of the host.
class ZN_HOST_EXPORT znLog
{
public:
    /// Reports a failure to the user. `text` is UTF-8, one message without a line break at its end; null is ignored.
    static void error(const char* text);
};
