#include "render/studio/StudioLight.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <array>
#include <cmath>

namespace render::studio
{

namespace
{

constexpr float floorLight = 0.30f;
constexpr float wallLight = 0.50f;
constexpr float ceilingLight = 0.62f;

/// A lamp with a rectangular front, which faces the middle of the room.
struct SoftBox {
    Eigen::Vector3f middle; ///< as far away as the extents tell
    float halfWidth, halfHeight;
    float softness; ///< of its border
    float light;
};

const std::array<SoftBox, 4>& softBoxes()
{
    static const std::array<SoftBox, 4> boxes = {{{{0.1f, -0.2f, 1.0f}, 0.65f, 0.65f, 0.25f, 1.9f},
                                                  {{-0.8f, -0.9f, 0.55f}, 0.45f, 0.55f, 0.15f, 3.2f},
                                                  {{1.1f, -0.5f, 0.30f}, 0.16f, 0.75f, 0.10f, 2.2f},
                                                  {{0.2f, 1.1f, 0.45f}, 0.60f, 0.20f, 0.12f, 1.6f}}};
    return boxes;
}

float smoothStep(float from, float to, float value)
{
    const float t = std::clamp((value - from) / (to - from), 0.0f, 1.0f);
    return t * t * (3 - 2 * t);
}

/// Inside 1, outside 0.
float coverOf(const SoftBox& box, const Eigen::Vector3f& direction)
{
    const float distance = box.middle.norm();
    const Eigen::Vector3f axis = box.middle / distance;
    const float facing = axis.dot(direction);
    if (facing <= 0)
        return 0;
    const Eigen::Vector3f right = Eigen::Vector3f::UnitZ().cross(axis).normalized();
    const Eigen::Vector3f onFront = direction * (distance / facing);
    const float x = std::abs(onFront.dot(right)), y = std::abs(onFront.dot(axis.cross(right)));
    return smoothStep(box.halfWidth + box.softness, box.halfWidth, x) *
           smoothStep(box.halfHeight + box.softness, box.halfHeight, y);
}

} // namespace

Eigen::Vector3f studioLight(const Eigen::Vector3f& direction)
{
    const float height = direction.z();
    float light = height < 0 ? wallLight + (floorLight - wallLight) * smoothStep(0, -0.5f, height)
                             : wallLight + (ceilingLight - wallLight) * smoothStep(0, 0.8f, height);
    for (const SoftBox& box : softBoxes())
        light += box.light * coverOf(box, direction);
    return Eigen::Vector3f::Constant(light);
}

} // namespace render::studio
