#pragma once

#include "host/znKernelServices/znBaseService.h"
#include "host/znKernelServices/zndCameraNode.h"

/// Makes cameras, tracks and viewpoints. What it makes hangs in the camera tree of the session, beside the scene.
class ZN_HOST_EXPORT znCameraService : public znBaseService
{
public:
    /// The camera of this name: a new one, or the one that there is. It is in the pool.
    /// @param projection of a new camera, as `osg::UberCameraBase::Projection`
    virtual zndCameraNode createCamera(const QString& name, int projection) = 0;
    /// A new track as the last child of the camera's node; an empty wrapper when `camera` is none.
    virtual zndNode createCameraTrack(const QString& name, const zndCameraNode& camera) = 0;
    /// The camera of the pool that is a viewpoint and bears this name; its `getId` is 0 when there is none.
    virtual zndCameraBaseNode findViewpoint(const QString& name) = 0;
};
