#pragma once

#include "geometry/rays/Parts.h"
#include "geometry/rays/Ray.h"
#include "render/Rays.h"
#include "render/SnapshotView.h"

#include <Eigen/Core>

#include <algorithm>
#include <optional>
#include <vector>

namespace render
{

/// The axes of an eye: `back` points from the scene to the eye.
struct EyeAxes {
    Eigen::Vector3d right, up, back;
};

EyeAxes axesOf(View view);

/// An eye on the stage. A picture coordinate runs from -1 at the left (lower) border to 1 at the right (upper) one.
struct Camera {
    Eigen::Vector3f eye;
    Eigen::Vector3f right, up, back;
    bool perspective = false;
    /// Half of the picture's extent: at distance 1 from the eye for a perspective, anywhere otherwise.
    float halfWidth = 1, halfHeight = 1;
    /// Rays start this far from the eye: before the stage, but not so far from it that they lose digits.
    float lead = 0;

    Ray rayAt(float x, float y) const
    {
        const Eigen::Vector3f aside = right * (x * halfWidth) + up * (y * halfHeight);
        if (!perspective)
            return {eye + aside, -back};
        const Eigen::Vector3f direction = (aside - back).normalized();
        return {eye + direction * lead, direction};
    }

    /// Half of the picture's height at a point of the stage.
    float halfHeightAt(const Eigen::Vector3f& point) const
    {
        return perspective ? halfHeight * std::max((eye - point).dot(back), 0.0f) : halfHeight;
    }
};

struct FrameShape {
    int width = 1, height = 1; ///< pixels
    float margin = 0;          ///< what stays free along each border, as part of the shorter side
};

/// Where the stage is in the world: what is subtracted first, and the size of a millimetre.
struct StagePlace {
    Eigen::Vector3d center;
    double scale = 1;
};

/// The camera of an eye in the world, for a picture of this shape. Nothing when its placement gives no direction or its
/// optics are impossible.
std::optional<Camera> cameraOf(const Eye& eye, const StagePlace& stage, const FrameShape& frame);

/// The half-spaces of an eye on the stage: the points whose first three numbers times theirs, and the last one, are
/// not negative together.
std::vector<Eigen::Vector4d> sectionsOf(const Eye& eye, const StagePlace& stage);

/// The camera that shows all parts as large as the frame allows.
Camera fitCamera(const PartList& list, View view, const FrameShape& frame);

} // namespace render
