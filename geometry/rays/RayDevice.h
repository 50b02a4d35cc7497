#pragma once

#include "geometry/rays/EmbreeHandles.h"
#include "geometry/rays/Watch.h"

#include <mutex>
#include <string>

namespace geometry::rays
{

/// The ray tracer, which remembers the first error that it ran into.
class RayDevice
{
public:
    RayDevice(int threads, const Watch& watch);
    RayDevice(const RayDevice&) = delete;
    RayDevice& operator=(const RayDevice&) = delete;

    RTCDevice get() const { return m_device.get(); }

    /// A scene whose build ends early when the watch is cancelled.
    SceneHandle makeScene() const;

    bool hasFailed() const;
    bool isOutOfMemory() const;
    /// The text of the first error, empty when there was none. A cancelled build is none.
    std::string errorText() const;

private:
    void note(RTCError code, const char* text);

    mutable std::mutex m_mutex;
    RTCError m_code = RTC_ERROR_NONE;
    std::string m_text;
    const Watch& m_watch;
    DeviceHandle m_device;
};

} // namespace geometry::rays
