#pragma once

#include <embree3/rtcore.h>

#include <memory>

namespace geometry::rays
{

struct DeviceRelease {
    void operator()(RTCDevice device) const { rtcReleaseDevice(device); }
};
struct SceneRelease {
    void operator()(RTCScene scene) const { rtcReleaseScene(scene); }
};
struct GeometryRelease {
    void operator()(RTCGeometry geometry) const { rtcReleaseGeometry(geometry); }
};

/// Each holds one reference on an object of the ray tracer; scenes and geometries go before their device.
using DeviceHandle = std::unique_ptr<RTCDeviceTy, DeviceRelease>;
using SceneHandle = std::unique_ptr<RTCSceneTy, SceneRelease>;
using GeometryHandle = std::unique_ptr<RTCGeometryTy, GeometryRelease>;

} // namespace geometry::rays
