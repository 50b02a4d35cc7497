#pragma once

#include "host/znKernelServices/znBaseService.h"
#include "host/znKernelServices/zndReferenceNode.h"

/// Makes references in the scene.
class ZN_HOST_EXPORT znReferenceService : public znBaseService
{
public:
    /// A new empty reference node below `parent`, below the scene root when that stands for nothing.
    virtual zndReferenceNode createReference(const zndNode& parent) = 0;
};
