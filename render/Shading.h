#pragma once

#include "geometry/rays/RayScene.h"
#include "render/Camera.h"

namespace render
{

/// What reaches the eye: light that is there in any case, and light that comes as far as the place is open to the sky.
struct Light {
    Eigen::Vector3f fixed = {0, 0, 0};
    Eigen::Vector3f ambient = {0, 0, 0};

    Light& operator+=(const Light& other)
    {
        fixed += other.fixed;
        ambient += other.ambient;
        return *this;
    }
    Light operator*(float factor) const { return {fixed * factor, ambient * factor}; }
};

/// A place on the model as the eye sees it.
struct SeenPoint {
    Eigen::Vector3f position;
    Eigen::Vector3f normal;     ///< for the light: smooth where the mesh has normals; on the eye's side
    Eigen::Vector3f flatNormal; ///< of the triangle, on the eye's side
    Eigen::Vector3f color;      ///< amounts of light
    Eigen::Vector3f emission;
    float alpha = 1;
    std::uint32_t face = 0; ///< the face of the model, the same for all when the mesh has none
    bool isStroke = false;
    std::optional<float> openness; ///< to the sky, 0 to 1, where the mesh tells it
};

/// Everything about the place that `ray` met.
SeenPoint seenPoint(const RayScene& scene, const Hit& hit, const Ray& ray);

/// The lamps of the picture: a key light over the eye's left shoulder, a weak fill light from its right, and a sky that
/// is brighter above than below. A light grey surface that faces the eye is about as bright as its colour.
class Lamps
{
public:
    explicit Lamps(const Camera& camera);

    Light on(const SeenPoint& point, const Eigen::Vector3f& toEye) const;

private:
    Eigen::Vector3f m_key;
    Eigen::Vector3f m_fill;
};

} // namespace render
