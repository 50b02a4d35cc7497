#include "files/vrml/VrmlSweeps.h"

#include "files/vrml/VrmlGeometry.h"
#include "files/vrml/VrmlTransforms.h"
#include "scene/MatrixMath.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace files::vrml
{

namespace
{

osg::Vec3f minus(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

float dot(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

osg::Vec3f cross(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Of length 1, or 0 where there is no direction.
osg::Vec3f direction(const osg::Vec3f& v)
{
    const float length = std::sqrt(dot(v, v));
    if (!(length > 1e-12f) || !std::isfinite(length))
        return {};
    return {v.x / length, v.y / length, v.z / length};
}

bool isNone(const osg::Vec3f& v)
{
    return v == osg::Vec3f();
}

/// The axes of the cross sections along a spine.
struct Frames {
    std::vector<osg::Vec3f> y, z;
};

/// Exchanges entries without a direction for the next one before, or the first one after.
void fillGaps(std::vector<osg::Vec3f>& axes, const osg::Vec3f& otherwise)
{
    const auto first = std::find_if_not(axes.begin(), axes.end(), isNone);
    osg::Vec3f last = first == axes.end() ? otherwise : *first;
    for (osg::Vec3f& axis : axes)
        last = axis = isNone(axis) ? last : axis;
}

/// Some direction across `y`: the Z axis where that is possible.
osg::Vec3f someAcross(const osg::Vec3f& y)
{
    const osg::Vec3f x = direction(cross(y, std::abs(y.z) > 0.99f ? osg::Vec3f{0, -1, 0} : osg::Vec3f{0, 0, 1}));
    return cross(x, y);
}

/// A Z axis that leans against the one before is turned round, so that the tube does not twist.
Frames framesOf(const std::vector<osg::Vec3f>& spine)
{
    const std::size_t count = spine.size();
    const bool isClosed = count > 2 && spine.front() == spine.back();
    Frames frames;
    for (std::size_t i = 0; i < count; ++i) {
        const osg::Vec3f& before = i > 0 ? spine[i - 1] : isClosed ? spine[count - 2] : spine[0];
        const osg::Vec3f& after = i + 1 < count ? spine[i + 1] : isClosed ? spine[1] : spine[count - 1];
        frames.y.push_back(direction(minus(after, before)));
        frames.z.push_back(direction(cross(minus(after, spine[i]), minus(before, spine[i]))));
    }
    if (!isClosed && count > 2) {
        frames.z.front() = frames.z[1];
        frames.z.back() = frames.z[count - 2];
    }
    fillGaps(frames.y, {0, 1, 0});
    fillGaps(frames.z, someAcross(frames.y.front()));
    for (std::size_t i = 1; i < count; ++i)
        if (dot(frames.z[i], frames.z[i - 1]) < 0)
            frames.z[i] = {-frames.z[i].x, -frames.z[i].y, -frames.z[i].z};
    return frames;
}

struct Section {
    std::vector<osg::Vec3f> points; ///< in the plane y = 0
    bool isClosed = false;
};

Section sectionOf(const Node& node)
{
    static constexpr float square[] = {1, 1, 1, -1, -1, -1, -1, 1, 1, 1};
    std::span<const float> numbers = node.floats("crossSection");
    if (!node.find("crossSection"))
        numbers = square;
    Section section;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        section.points.push_back({numbers[i], 0, numbers[i + 1]});
    section.isClosed = section.points.size() > 2 && section.points.front() == section.points.back();
    return section;
}

/// The `count` numbers of the ring `i`; the last ones stand for all that follow.
std::span<const float> numbersFor(std::span<const float> all, std::size_t i, std::size_t count)
{
    if (all.size() < count)
        return {};
    return all.subspan(std::min(i, all.size() / count - 1) * count, count);
}

osg::Vec3f placed(const osg::Vec3f& p, const osg::Vec3f& origin, const osg::Vec3f& y, const osg::Vec3f& z)
{
    const osg::Vec3f x = direction(cross(y, z));
    return {origin.x + p.x * x.x + p.y * y.x + p.z * z.x, origin.y + p.x * x.y + p.y * y.y + p.z * z.y,
            origin.z + p.x * x.z + p.y * y.z + p.z * z.z};
}

void appendRing(Sweep& sweep, const Node& node, const Section& section, const Frames& frames, std::size_t i,
                const osg::Vec3f& origin)
{
    const std::span<const float> scale = numbersFor(node.floats("scale"), i, 2);
    const osg::Matrix turn = osg::rotationMatrix(rotationOf(numbersFor(node.floats("orientation"), i, 4)));
    for (const osg::Vec3f& p : section.points) {
        const osg::Vec3f sized = scale.empty() ? p : osg::Vec3f{p.x * scale[0], 0, p.z * scale[1]};
        sweep.points.push_back(placed(osg::transformVector(turn, sized), origin, frames.y[i], frames.z[i]));
    }
}

void appendQuad(Ints& corners, std::size_t a, std::size_t b, std::size_t c, std::size_t d)
{
    for (const std::size_t corner : {a, b, c, d})
        corners.push_back(static_cast<std::int32_t>(corner));
    corners.push_back(-1);
}

void appendCap(Ints& corners, const Section& section, std::size_t first, bool isEnd)
{
    const std::size_t count = section.points.size() - (section.isClosed ? 1 : 0);
    for (std::size_t i = 0; i < count; ++i)
        corners.push_back(static_cast<std::int32_t>(first + (isEnd ? i : count - 1 - i)));
    corners.push_back(-1);
}

/// Holds the number of points against what 32-bit indices and the limits bear, before they are made.
void checkSize(const Node& node, const Source& source, std::uint64_t rows, std::uint64_t columns)
{
    const std::uint64_t limit =
        std::min<std::uint64_t>(source.task().options().limits.maxVertices, std::numeric_limits<std::int32_t>::max());
    if (rows > 0 && columns > limit / rows)
        source.fail(ErrorCode::LimitExceeded, tr("more than %1 vertices").arg(limit), node.offset);
    constexpr std::uint64_t memoryOfPoint = sizeof(osg::Vec3f) + 5 * sizeof(std::int32_t);
    source.task().takeMemory(rows * columns * memoryOfPoint, source.place(node.offset));
}

} // namespace

Sweep gridSweep(const Node& node, const Source& source)
{
    const std::span<const float> heights = node.floats("height");
    const auto columns = static_cast<std::uint64_t>(std::max(node.integer("xDimension", 0), 0));
    const auto rows = static_cast<std::uint64_t>(std::max(node.integer("zDimension", 0), 0));
    Sweep sweep;
    if (columns < 2 || rows < 2 || columns > heights.size() / rows) {
        source.warn(tr("there are not enough heights for this grid"), node.offset);
        return sweep;
    }
    checkSize(node, source, rows, columns);
    const float xSpacing = node.number("xSpacing", 1);
    const float zSpacing = node.number("zSpacing", 1);
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < columns; ++column)
            sweep.points.push_back({float(column) * xSpacing, heights[row * columns + column], float(row) * zSpacing});
    for (std::size_t row = 0; row + 1 < rows; ++row)
        for (std::size_t i = row * columns; i + 1 < (row + 1) * columns; ++i)
            appendQuad(sweep.corners, i, i + columns, i + columns + 1, i + 1);
    return sweep;
}

Sweep extrusionSweep(const Node& node, const Source& source)
{
    const Section section = sectionOf(node);
    std::vector<osg::Vec3f> spine = vectorsOf(node.floats("spine"));
    if (!node.find("spine"))
        spine = {{0, 0, 0}, {0, 1, 0}};
    Sweep sweep;
    if (section.points.size() < 2 || spine.size() < 2) {
        source.warn(tr("an extrusion needs two points of spine and section at least"), node.offset);
        return sweep;
    }
    const std::size_t width = section.points.size();
    checkSize(node, source, spine.size(), width);
    const Frames frames = framesOf(spine);
    for (std::size_t i = 0; i < spine.size(); ++i)
        appendRing(sweep, node, section, frames, i, spine[i]);
    for (std::size_t ring = 0; ring + 1 < spine.size(); ++ring)
        for (std::size_t i = ring * width; i + 1 < (ring + 1) * width; ++i)
            appendQuad(sweep.corners, i, i + 1, i + 1 + width, i + width);
    if (node.flag("beginCap", true))
        appendCap(sweep.corners, section, 0, false);
    if (node.flag("endCap", true))
        appendCap(sweep.corners, section, (spine.size() - 1) * width, true);
    return sweep;
}

} // namespace files::vrml
