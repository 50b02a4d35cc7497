#pragma once

#include "host/znKernelServices/zndCameraBaseNode.h"

/// Stands for a camera of the host, which has tracks below it that hold its viewpoints.
class ZN_HOST_EXPORT zndCameraNode : public zndCameraBaseNode
{
    Q_OBJECT

public:
    using zndCameraBaseNode::zndCameraBaseNode;

    /// The first track of the camera; an empty wrapper when it has none.
    zndNode getDefaultCameraTrack() const;
};
