#include "geometry/rays/RayDevice.h"

namespace geometry::rays
{

RayDevice::RayDevice(int threads, const Watch& watch) : m_watch(watch)
{
    const std::string settings = "threads=" + std::to_string(threads);
    m_device.reset(rtcNewDevice(settings.c_str()));
    if (!m_device) {
        note(rtcGetDeviceError(nullptr), "the ray tracer does not start");
        return;
    }
    rtcSetDeviceErrorFunction(
        m_device.get(),
        [](void* self, RTCError code, const char* text) { static_cast<RayDevice*>(self)->note(code, text); }, this);
}

SceneHandle RayDevice::makeScene() const
{
    SceneHandle scene(rtcNewScene(m_device.get()));
    rtcSetSceneFlags(scene.get(), RTC_SCENE_FLAG_ROBUST);
    rtcSetSceneProgressMonitorFunction(
        scene.get(), [](void* watch, double) { return !static_cast<const Watch*>(watch)->cancelled(); },
        const_cast<Watch*>(&m_watch));
    return scene;
}

void RayDevice::note(RTCError code, const char* text)
{
    const std::lock_guard lock(m_mutex);
    if (m_code != RTC_ERROR_NONE || code == RTC_ERROR_CANCELLED)
        return;
    m_code = code;
    m_text = text ? text : "";
}

bool RayDevice::hasFailed() const
{
    const std::lock_guard lock(m_mutex);
    return !m_device || m_code != RTC_ERROR_NONE;
}

bool RayDevice::isOutOfMemory() const
{
    const std::lock_guard lock(m_mutex);
    return m_code == RTC_ERROR_OUT_OF_MEMORY;
}

std::string RayDevice::errorText() const
{
    const std::lock_guard lock(m_mutex);
    return m_text;
}

} // namespace geometry::rays
