#pragma once

#include "host/znKernelServices/znBaseService.h"
#include "host/znKernelServices/zndReferenceNode.h"

/// Makes references in the scene.
class ZN_HOST_EXPORT znReferenceService : public znBaseService
{
public:
    /// A new empty reference node, as the last child of `parent`. When that stands for nothing the node has no parent
    /// and nobody holds a reference on it.
    virtual zndReferenceNode createReference(const zndNode& parent) = 0;
};
