#pragma once

#include "host/HostExport.h"

#include <typeindex>

class znInterfaceObject;

/// Finds the interfaces of the host.
class ZN_HOST_EXPORT znInterfaceFactory
{
public:
    /// The only one; never null, valid as long as the program runs.
    static znInterfaceFactory* the();

    /// The interface of this type, null if the host has none. It lives as long as the process, so that callers may keep
    /// it, and works on whatever session is alive when it is called.
    znInterfaceObject* get(std::type_index type) const;
};
