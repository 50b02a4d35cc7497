#pragma once

#include "geometry/rays/Ray.h"
#include "geometry/rays/Strokes.h"
#include "geometry/rays/Surface.h"

#include <map>
#include <optional>
#include <span>
#include <utility>

namespace geometry::rays
{

/// One use of a surface or of strokes on the stage; the other of the two is null.
struct Placed {
    std::uint32_t part = 0; ///< which of the parts it is a use of
    const Surface* surface = nullptr;
    const Strokes* strokes = nullptr;
    Look look;
    Eigen::Matrix3f normalMatrix; ///< takes directions of normals to the stage; lengths are arbitrary
    bool isOpaque = false;        ///< lets no light through anywhere; strokes never count
    bool isForward = false;       ///< seen before the rest
};

/// Where a ray meets the model.
struct Hit {
    std::uint32_t placed = 0; ///< index of what was hit
    unsigned kind = 0;        ///< for strokes: which of them
    std::uint32_t primitive = 0;
    float distance = 0;
    float u = 0, v = 0;     ///< within a triangle
    Eigen::Vector3f normal; ///< of the flat triangle, on the stage, of length 1; its side is arbitrary
};

/// A ray that ends.
struct Segment {
    Ray ray;
    float length = 0;
};

/// Radii of lines and points on the stage.
struct StrokeRadii {
    float line = 0, point = 0;
};

/// All parts, ready for rays. Each shape is built once, whatever the number of its uses.
class RayScene
{
public:
    /// `device` and what the shapes of `list` hold must outlive the scene. With errors on the device, or after a
    /// cancel, the scene is incomplete.
    /// @param towardsEye a direction of length 1; zero when nobody looks
    RayScene(const RayDevice& device, const PartList& list, const Eigen::Vector3f& towardsEye, const StrokeRadii& radii,
             Watch& watch);

    /// From now on rays see and are blocked by what lies in all of `halfSpaces` alone: the points whose product with
    /// the first three numbers, plus the last one, is not negative.
    void cut(std::vector<Eigen::Vector4d> halfSpaces) { m_halfSpaces = std::move(halfSpaces); }

    /// What `ray` meets first beyond the distance `from`.
    std::optional<Hit> firstHit(const Ray& ray, float from) const;
    /// What each of `rays` meets first, what comes forward before all else, into `hits`, which is as long. Rays that
    /// run side by side are found faster.
    void firstHits(std::span<const Ray> rays, std::span<std::optional<Hit>> hits) const;
    /// How many of `segments` run into something opaque.
    int countBlocked(std::span<const Segment> segments) const;
    const Placed& placed(std::uint32_t index) const { return m_placed[index]; }

private:
    using StrokeKey = std::pair<std::uint32_t, int>;

    void add(const Part& part, const Shape& shape, const Eigen::Affine3d& placement, const StrokeRadii& radii);
    void addSurface(const Part& part, const Shape& shape, const Eigen::Affine3d& placement);
    void addStrokes(const Part& part, const Shape& shape, const Eigen::Affine3d& placement, const StrokeRadii& radii);
    void place(RTCScene shape, const Placed& placed, const Eigen::Affine3d& placement);
    void commit();
    void commitForward();
    void meet(RTCScene scene, std::span<const Ray> rays, std::span<std::optional<Hit>> hits) const;
    Hit describe(const RTCHit& hit, float distance) const;
    RTCRay clipped(const Ray& ray, float from, float to) const;

    const RayDevice& m_device;
    std::map<std::uint32_t, Surface> m_surfaces;
    std::map<StrokeKey, Strokes> m_strokes;
    std::vector<Placed> m_placed;
    SceneHandle m_visible;
    SceneHandle m_opaque;          ///< what blocks light, when that is not all
    RTCScene m_blockers = nullptr; ///< one of the two
    SceneHandle m_forward;         ///< what is seen before the rest; null for nothing
    std::vector<Eigen::Vector4d> m_halfSpaces;
};

} // namespace geometry::rays
