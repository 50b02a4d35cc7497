#pragma once

#include "host/znKernelServices/zndNode.h"

/// Stands for a node with a camera core.
class ZN_HOST_EXPORT zndCameraBaseNode : public zndNode
{
    Q_OBJECT

public:
    using zndNode::zndNode;

    /// The container id of the camera; 0 when this stands for none.
    std::uint64_t getId() const;
};
