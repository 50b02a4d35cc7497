#pragma once

#include "host/HostExport.h"

/// Root of the host's services.
class ZN_HOST_EXPORT znBaseService
{
public:
    virtual ~znBaseService();
};
