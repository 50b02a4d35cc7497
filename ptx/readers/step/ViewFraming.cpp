#include "ptx/readers/step/ViewFraming.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ptx::step
{

namespace
{

// A window so many times larger or smaller than what it shows is in another unit, or one that nobody has set.
constexpr float OutOfProportion = 20;
constexpr float Margin = 1.1F;
constexpr float NarrowestField = 1;
constexpr float WidestField = 170;

float dot(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

osg::Vec3f sum(const osg::Vec3f& a, const osg::Vec3f& b, float factor)
{
    return {a.x + b.x * factor, a.y + b.y * factor, a.z + b.z * factor};
}

float length(const osg::Vec3f& a)
{
    return std::sqrt(dot(a, a));
}

/// Along one direction, counted from the origin of the view system.
struct Range {
    float low = std::numeric_limits<float>::max();
    float high = std::numeric_limits<float>::lowest();

    float size() const { return high - low; }
    float middle() const { return (low + high) / 2; }
};

class Framing
{
public:
    Framing(const WrittenCamera& camera, const model::Bounds& shown) : m_camera(camera), m_hasBox(!shown.isEmpty)
    {
        for (unsigned i = 0; i < 8; ++i) {
            const osg::Vec3f corner = sum(shown.corner(i), camera.origin, -1);
            extend(m_across, dot(corner, camera.right));
            extend(m_upward, dot(corner, camera.up));
            extend(m_depth, dot(corner, camera.axis));
        }
        findEye();
        m_sign = sign();
    }

    void fill(model::View& view) const
    {
        view.isParallel = m_camera.isParallel;
        if (hasAspect())
            view.facts.aspect = m_camera.width / m_camera.height;
        osg::Vec3f eye = m_eye;
        if (view.isParallel) {
            view.height = m_camera.height;
            eye = sum(m_camera.origin, m_camera.axis, standBack());
            if (!isWindowMeant()) {
                eye = sum(sum(eye, m_camera.right, m_across.middle()), m_camera.up, m_upward.middle());
                view.height = Margin * std::max(m_upward.size(), m_across.size() / aspect());
            }
        } else {
            const float distance = std::abs(m_camera.planeDistance - m_eyeDepth);
            const float angle = 2 * std::atan2(m_camera.height / 2, distance) * 180 / std::numbers::pi_v<float>;
            view.fieldOfView = std::clamp(angle, NarrowestField, WidestField);
        }
        view.placement = placement(eye);
        for (const Section& section : m_camera.sections)
            view.facts.sections.push_back(halfSpace(section, eye));
    }

private:
    static void extend(Range& range, float value)
    {
        range.low = std::min(range.low, value);
        range.high = std::max(range.high, value);
    }

    // A point that is straight before or behind the origin was written in the space of the model; otherwise it is one
    // of the view system. Zero is one of the view system too, wherever that looks.
    void findEye()
    {
        const osg::Vec3f& point = m_camera.projectionPoint;
        const osg::Vec3f way = sum(point, m_camera.origin, -1);
        const float along = dot(way, m_camera.axis);
        constexpr float Parallel = 0.9999F;
        if (length(point) > 0 && length(way) > 0 && std::abs(along) > Parallel * length(way)) {
            m_eye = point;
            m_eyeDepth = along;
            return;
        }
        m_eye = sum(sum(sum(m_camera.origin, m_camera.right, point.x), m_camera.up, point.y), m_camera.axis, point.z);
        m_eyeDepth = point.z;
    }

    /// 1 when the eye looks along the axis, -1 when against it.
    float sign() const
    {
        const float towardsPlane = m_camera.planeDistance < m_eyeDepth ? -1.F : 1.F;
        if (!m_hasBox)
            return towardsPlane;
        const float behind = towardsPlane > 0 ? m_eyeDepth - m_depth.high : m_depth.low - m_eyeDepth;
        return behind > m_depth.size() / 2 ? -towardsPlane : towardsPlane;
    }

    float standBack() const
    {
        if (!m_hasBox)
            return m_eyeDepth;
        const float diagonal = std::hypot(m_across.size(), m_upward.size(), m_depth.size());
        return m_sign > 0 ? m_depth.low - diagonal : m_depth.high + diagonal;
    }

    bool isWindowMeant() const
    {
        if (!m_hasBox)
            return true;
        const float size = std::max(m_across.size(), m_upward.size());
        const bool isInProportion =
            m_camera.height * OutOfProportion > size && m_camera.height < OutOfProportion * size;
        return isInProportion && meets(m_across, m_camera.width) && meets(m_upward, m_camera.height);
    }

    static bool meets(const Range& box, float window) { return box.low < window / 2 && box.high > -window / 2; }

    bool hasAspect() const { return m_camera.width > 0 && m_camera.height > 0; }
    float aspect() const { return hasAspect() ? m_camera.width / m_camera.height : 1; }

    // Whoever cuts wants to see what the cut lays open, whichever way programs turn the plane: what lies before it
    // goes.
    osg::HalfSpace halfSpace(const Section& section, const osg::Vec3f& eye) const
    {
        constexpr float EdgeOn = 1e-3F;
        const osg::Vec3f& n = section.normal;
        osg::HalfSpace half = {-m_sign * dot(n, m_camera.right), dot(n, m_camera.up), -m_sign * dot(n, m_camera.axis),
                               -dot(n, sum(section.point, eye, -1))};
        const bool isTurned = m_camera.isParallel ? half[2] > EdgeOn : half[3] > 0;
        for (float& number : half)
            number = isTurned ? -number : number;
        return half;
    }

    osg::Matrix placement(const osg::Vec3f& eye) const
    {
        osg::Matrix matrix;
        // A camera looks along its negative Z.
        set(matrix, 0, m_camera.right, -m_sign);
        set(matrix, 1, m_camera.up, 1);
        set(matrix, 2, m_camera.axis, -m_sign);
        set(matrix, 3, eye, 1);
        return matrix;
    }

    static void set(osg::Matrix& matrix, unsigned column, const osg::Vec3f& vector, float factor)
    {
        matrix[column * 4] = vector.x * factor;
        matrix[column * 4 + 1] = vector.y * factor;
        matrix[column * 4 + 2] = vector.z * factor;
    }

    const WrittenCamera& m_camera;
    bool m_hasBox;
    Range m_across, m_upward, m_depth; ///< of the box
    osg::Vec3f m_eye;
    float m_eyeDepth = 0;
    float m_sign = 1;
};

} // namespace

void frame(model::View& view, const WrittenCamera& camera, const model::Bounds& shown)
{
    Framing(camera, shown).fill(view);
}

} // namespace ptx::step
