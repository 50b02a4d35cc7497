#pragma once

#include "host/HostExport.h"

/// Something that one module of the host offers to the others, found by its type.
class ZN_HOST_EXPORT znInterfaceObject
{
public:
    znInterfaceObject();
    virtual ~znInterfaceObject();
    znInterfaceObject(const znInterfaceObject&) = delete;
    znInterfaceObject& operator=(const znInterfaceObject&) = delete;
};
