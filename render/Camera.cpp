#include "render/Camera.h"

#include <array>
#include <cmath>
#include <limits>

namespace render
{

namespace
{

/// Tangent of half the angle over the shorter side of a perspective picture.
constexpr double shortTangent = 0.17;
/// What is flat or a single point still gets a picture of this half extent.
constexpr double leastHalfExtent = 1e-3;
/// All parts are within this distance of the origin.
constexpr float stageRadius = 1.01f;

EyeAxes lookFrom(const Eigen::Vector3d& direction, const Eigen::Vector3d& upHint)
{
    EyeAxes axes;
    axes.back = direction.normalized();
    axes.right = upHint.cross(axes.back).normalized();
    axes.up = axes.back.cross(axes.right);
    return axes;
}

/// How far the parts reach along some directions: the largest dot product of any drawn point with each.
///
/// The half-spaces that hold a picture's content are what a camera is fitted to, be it a perspective or not, and few
/// parts of an assembly touch them: a part whose box lies within what is known already costs no look at its vertices.
class Reach
{
public:
    explicit Reach(const std::array<Eigen::Vector3d, 5>& directions) : m_directions(directions)
    {
        m_farthest.fill(-std::numeric_limits<double>::infinity());
    }

    void extend(const Shape& shape, const Eigen::Affine3d& placement)
    {
        bool known = true;
        for (std::size_t i = 0; i < m_directions.size(); ++i) {
            m_local[i] = placement.linear().transpose() * m_directions[i];
            m_offset[i] = m_directions[i].dot(placement.translation());
            known = known && boxReach(shape.bounds.cast<double>(), m_local[i]) + m_offset[i] <= m_farthest[i];
        }
        if (!known)
            forEachUsedPosition(*shape.mesh,
                                [this](const Eigen::Vector3f& position) { extend(position.cast<double>()); });
    }

    double operator[](std::size_t direction) const { return m_farthest[direction]; }

private:
    static double boxReach(const Eigen::AlignedBox3d& box, const Eigen::Vector3d& direction)
    {
        return box.min().cwiseProduct(direction).cwiseMax(box.max().cwiseProduct(direction)).sum();
    }

    void extend(const Eigen::Vector3d& position)
    {
        for (std::size_t i = 0; i < m_directions.size(); ++i)
            m_farthest[i] = std::max(m_farthest[i], m_local[i].dot(position) + m_offset[i]);
    }

    std::array<Eigen::Vector3d, 5> m_directions;
    std::array<double, 5> m_farthest = {};
    std::array<Eigen::Vector3d, 5> m_local; ///< the directions, as the part at work sees them
    std::array<double, 5> m_offset = {};
};

/// Tangents of the half angles, 0 for a parallel projection.
struct Tangents {
    double x = 0, y = 0;
};

/// How far the parts reach over the sides of a pyramid with these tangents (a box for 0) around the view axis, in the
/// order right, left, up, down, and towards the eye.
Reach reachOf(const PartList& list, const EyeAxes& axes, const Tangents& tangents)
{
    Reach reach({axes.right + tangents.x * axes.back, -axes.right + tangents.x * axes.back,
                 axes.up + tangents.y * axes.back, -axes.up + tangents.y * axes.back, axes.back});
    for (const Part& part : list.parts)
        reach.extend(list.shapes[part.shape], part.placement);
    return reach;
}

Camera cameraWith(const EyeAxes& axes)
{
    Camera camera;
    camera.right = axes.right.cast<float>();
    camera.up = axes.up.cast<float>();
    camera.back = axes.back.cast<float>();
    return camera;
}

void placeEye(Camera& camera, const EyeAxes& axes, const Eigen::Vector3d& place)
{
    camera.eye = (axes.right * place.x() + axes.up * place.y() + axes.back * place.z()).cast<float>();
}

/// Half extents of the whole picture whose free part holds `content`.
Tangents framed(const Tangents& content, const FrameShape& frame)
{
    const double aspect = double(frame.width) / frame.height;
    const double margin = 2 * double(frame.margin) * std::min(frame.width, frame.height);
    const double needed = std::max({content.x / (frame.width - margin) * frame.height,
                                    content.y / (frame.height - margin) * frame.height, leastHalfExtent});
    return {needed * aspect, needed};
}

Camera fitParallel(const PartList& list, const EyeAxes& axes, const FrameShape& frame)
{
    const Reach reach = reachOf(list, axes, {});
    const Tangents half = framed({(reach[0] + reach[1]) / 2, (reach[2] + reach[3]) / 2}, frame);
    Camera camera = cameraWith(axes);
    camera.halfWidth = float(half.x);
    camera.halfHeight = float(half.y);
    placeEye(camera, axes, {(reach[0] - reach[1]) / 2, (reach[2] - reach[3]) / 2, reach[4] + 1});
    return camera;
}

/// The point of a pyramid that holds the parts follows from its sides: each says how far the point must step back.
Camera fitPerspective(const PartList& list, const EyeAxes& axes, const FrameShape& frame)
{
    const int side = std::min(frame.width, frame.height);
    const double margin = 2 * double(frame.margin) * side;
    const Tangents whole = {shortTangent * frame.width / side, shortTangent * frame.height / side};
    const Tangents inner = {whole.x * (1 - margin / frame.width), whole.y * (1 - margin / frame.height)};
    const Reach reach = reachOf(list, axes, inner);
    const double distance = std::max((reach[0] + reach[1]) / (2 * inner.x), (reach[2] + reach[3]) / (2 * inner.y));
    Camera camera = cameraWith(axes);
    camera.perspective = true;
    camera.halfWidth = float(whole.x);
    camera.halfHeight = float(whole.y);
    placeEye(camera, axes,
             {(reach[0] - reach[1]) / 2, (reach[2] - reach[3]) / 2, std::max(distance, reach[4] + leastHalfExtent)});
    camera.lead = std::max(camera.eye.norm() - stageRadius, 0.0f);
    return camera;
}

} // namespace

std::vector<Eigen::Vector4d> sectionsOf(const Eye& eye, const StagePlace& stage)
{
    const Eigen::Matrix4d matrix = osg::toEigen(eye.placement);
    Eigen::Matrix3d turn;
    for (int i = 0; i < 3; ++i)
        turn.col(i) = matrix.col(i).head<3>().normalized();
    std::vector<Eigen::Vector4d> sections;
    for (const osg::HalfSpace& section : eye.sections) {
        const Eigen::Vector3d normal = turn * Eigen::Vector3d(section[0], section[1], section[2]);
        const double atCenter = section[3] + normal.dot(stage.center - matrix.col(3).head<3>());
        sections.emplace_back(normal.x(), normal.y(), normal.z(), atCenter * stage.scale);
    }
    return sections;
}

std::optional<Camera> cameraOf(const Eye& eye, const StagePlace& stage, const FrameShape& frame)
{
    const Eigen::Matrix4d matrix = osg::toEigen(eye.placement);
    const Eigen::Vector3d back = matrix.col(2).head<3>();
    const Eigen::Vector3d up = matrix.col(1).head<3>();
    const double window = eye.isPerspective ? std::tan(double(eye.fieldOfView) * std::acos(-1.0) / 360)
                                            : double(eye.height) / 2 * stage.scale;
    const double half = window * std::max(1.0, double(eye.aspect) * frame.height / frame.width);
    const bool hasOptics = half > 0 && std::isfinite(half) && (!eye.isPerspective || eye.fieldOfView < 180);
    if (!matrix.allFinite() || !(up.cross(back).norm() > 0) || !hasOptics)
        return std::nullopt;
    const EyeAxes axes = lookFrom(back, up);
    Camera camera = cameraWith(axes);
    Eigen::Vector3d place = stage.scale * (matrix.col(3).head<3>() - stage.center);
    if (!eye.isPerspective) // no farther than needed, which keeps digits
        place += axes.back * (std::min(place.dot(axes.back), 2.0) - place.dot(axes.back));
    camera.eye = place.cast<float>();
    camera.perspective = eye.isPerspective;
    camera.halfHeight = float(half);
    camera.halfWidth = float(half * frame.width / frame.height);
    camera.lead = eye.isPerspective ? std::max(camera.eye.norm() - stageRadius, 0.0f) : 0;
    return camera;
}

EyeAxes axesOf(View view)
{
    const Eigen::Vector3d x = Eigen::Vector3d::UnitX(), y = Eigen::Vector3d::UnitY(), z = Eigen::Vector3d::UnitZ();
    switch (view) {
    case View::Front:
        return lookFrom(-y, z);
    case View::Back:
        return lookFrom(y, z);
    case View::Left:
        return lookFrom(-x, z);
    case View::Right:
        return lookFrom(x, z);
    case View::Top:
        return lookFrom(z, y);
    case View::Bottom:
        return lookFrom(-z, -y);
    case View::Iso:
        break;
    }
    return lookFrom({1, -1, 0.8}, z);
}

Camera fitCamera(const PartList& list, View view, const FrameShape& frame)
{
    return view == View::Iso ? fitPerspective(list, axesOf(view), frame) : fitParallel(list, axesOf(view), frame);
}

} // namespace render
