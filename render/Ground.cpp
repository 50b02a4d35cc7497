#include "render/Ground.h"

namespace render
{

namespace
{

constexpr float darkest = 0.55f;
/// The floor keeps clear of bottoms that lie on it.
constexpr float clearance = 2e-3f;

float smoothStep(float x)
{
    const float t = std::clamp(x, 0.0f, 1.0f);
    return t * t * (3 - 2 * t);
}

} // namespace

Ground::Ground(const Eigen::AlignedBox3d& stage)
    : m_height(float(stage.min().z()) - clearance),
      m_footprint(stage.min().head<2>().cast<float>(), stage.max().head<2>().cast<float>())
{
}

std::optional<Ground::Place> Ground::placeOn(const Ray& ray) const
{
    const float drop = m_height - ray.origin.z();
    if (ray.direction.z() >= 0 || drop >= 0)
        return std::nullopt;
    const Eigen::Vector3f position = ray.origin + ray.direction * (drop / ray.direction.z());
    const float distance = m_footprint.exteriorDistance(Eigen::Vector2f(position.head<2>()));
    if (distance >= groundReach)
        return std::nullopt;
    return Place{position, darkest * smoothStep(1 - distance / groundReach)};
}

} // namespace render
