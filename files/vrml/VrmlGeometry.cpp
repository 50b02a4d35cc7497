#include "files/vrml/VrmlGeometry.h"

#include "files/vrml/FaceSet.h"
#include "files/vrml/VrmlPrimitives.h"
#include "files/vrml/VrmlSweeps.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace files::vrml
{

namespace
{

/// In the arrays of a mesh of lines or points, and while it is made.
constexpr std::uint64_t memoryOfVertex = 64;

std::span<const float> floatsBelow(const Node& node, std::string_view field, NodeKind kind, std::string_view values)
{
    const Node* below = node.node(field);
    return below && below->kind() == kind ? below->floats(values) : std::span<const float>();
}

std::vector<osg::Color4f> colorsOf(const Node& node)
{
    const std::span<const float> numbers = floatsBelow(node, "color", NodeKind::Color, "color");
    std::vector<osg::Color4f> colors;
    for (std::size_t i = 0; i + 2 < numbers.size(); i += 3)
        colors.push_back({numbers[i], numbers[i + 1], numbers[i + 2], 1});
    return colors;
}

std::vector<osg::Vec2f> texCoordsOf(const Node& node)
{
    const std::span<const float> numbers = floatsBelow(node, "texCoord", NodeKind::TextureCoordinate, "point");
    std::vector<osg::Vec2f> result;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
        result.push_back({numbers[i], numbers[i + 1]});
    return result;
}

std::vector<osg::Vec3f> pointsOf(const Node& node)
{
    return vectorsOf(floatsBelow(node, "coord", NodeKind::Coordinate, "point"));
}

/// What face sets and grids have in common.
FaceSet lookOf(const Node& node)
{
    FaceSet set;
    set.offset = node.offset;
    set.normals.values = vectorsOf(floatsBelow(node, "normal", NodeKind::Normal, "vector"));
    set.normals.isPerCorner = node.flag("normalPerVertex", true);
    set.colors.values = colorsOf(node);
    set.colors.isPerCorner = node.flag("colorPerVertex", true);
    set.texCoords.values = texCoordsOf(node);
    set.isCounterClockwise = node.flag("ccw", true);
    set.creaseAngle = node.number("creaseAngle", 0);
    return set;
}

/// A picture is laid flat upon the two longest sides of the box around the corners, the first of equal ones: its width
/// is the length of the longest.
std::vector<osg::Vec2f> coordinatesInBox(std::span<const osg::Vec3f> points, std::span<const std::int32_t> corners)
{
    using Sides = std::array<float, 3>;
    const auto sidesOf = [](const osg::Vec3f& point) { return Sides{point.x, point.y, point.z}; };
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Sides lowest = {infinity, infinity, infinity}, size = {};
    for (const std::int32_t corner : corners)
        if (corner >= 0 && static_cast<std::size_t>(corner) < points.size())
            for (std::size_t axis = 0; axis < 3; ++axis)
                lowest[axis] = std::min(lowest[axis], sidesOf(points[std::size_t(corner)])[axis]);
    for (const std::int32_t corner : corners)
        if (corner >= 0 && static_cast<std::size_t>(corner) < points.size())
            for (std::size_t axis = 0; axis < 3; ++axis)
                size[axis] = std::max(size[axis], sidesOf(points[std::size_t(corner)])[axis] - lowest[axis]);
    std::array<std::size_t, 3> axes = {0, 1, 2};
    std::stable_sort(axes.begin(), axes.end(), [&](std::size_t a, std::size_t b) { return size[a] > size[b]; });
    const float width = size[axes[0]];
    std::vector<osg::Vec2f> result(points.size());
    for (std::size_t i = 0; i < points.size() && width > 0; ++i) {
        const Sides sides = sidesOf(points[i]);
        result[i] = {(sides[axes[0]] - lowest[axes[0]]) / width, (sides[axes[1]] - lowest[axes[1]]) / width};
    }
    return result;
}

/// A picture is laid over the whole of a grid, whose points have heights over a plane that begins at 0.
std::vector<osg::Vec2f> coordinatesOnGrid(const std::vector<osg::Vec3f>& points)
{
    std::vector<osg::Vec2f> result;
    const osg::Vec3f last = points.empty() ? osg::Vec3f() : points.back();
    for (const osg::Vec3f& point : points)
        result.push_back({last.x > 0 ? point.x / last.x : 0, last.z > 0 ? point.z / last.z : 0});
    return result;
}

osg::Mesh faceSet(const Node& node, bool isTextured, const Source& source)
{
    FaceSet set = lookOf(node);
    set.points = pointsOf(node);
    set.corners = node.ints("coordIndex");
    set.normals.index = node.ints("normalIndex");
    set.colors.index = node.ints("colorIndex");
    if (isTextured && !node.node("texCoord")) {
        source.task().takeMemory(set.points.size() * sizeof(osg::Vec2f), source.place(node.offset));
        set.texCoords.values = coordinatesInBox(set.points, set.corners);
    } else {
        set.texCoords.index = node.ints("texCoordIndex");
    }
    return makeMesh(std::move(set), source);
}

osg::Mesh elevationGrid(const Node& node, bool isTextured, const Source& source)
{
    const Sweep grid = gridSweep(node, source);
    FaceSet set = lookOf(node);
    set.points = grid.points;
    set.corners = grid.corners;
    if (isTextured && !node.node("texCoord")) {
        source.task().takeMemory(set.points.size() * sizeof(osg::Vec2f), source.place(node.offset));
        set.texCoords.values = coordinatesOnGrid(set.points);
    }
    return makeMesh(std::move(set), source);
}

osg::Mesh extrusion(const Node& node, const Source& source)
{
    const Sweep sweep = extrusionSweep(node, source);
    FaceSet set = lookOf(node);
    set.points = sweep.points;
    set.corners = sweep.corners;
    return makeMesh(std::move(set), source);
}

/// The colour of each corner or each line; empty when a corner or a line would have none.
std::vector<osg::Color4f> lineColors(const Node& node, const Source& source, std::span<const std::uint32_t> entryOf,
                                     std::span<const std::uint32_t> lineOf)
{
    const std::vector<osg::Color4f> colors = colorsOf(node);
    const bool isPerCorner = node.flag("colorPerVertex", true);
    const std::span<const std::int32_t> corners = node.ints("coordIndex");
    const std::span<const std::int32_t> index = node.ints("colorIndex");
    std::vector<osg::Color4f> result;
    for (std::size_t i = 0; i < entryOf.size() && !colors.empty(); ++i) {
        const std::size_t entry = isPerCorner ? entryOf[i] : lineOf[i];
        std::int64_t value = isPerCorner ? corners[entry] : std::int64_t(entry);
        if (!index.empty())
            value = entry < index.size() ? index[entry] : -1;
        if (value < 0 || static_cast<std::size_t>(value) >= colors.size()) {
            source.warn(
                tr("the colours of lines were left out: there are only %1").arg(static_cast<qulonglong>(colors.size())),
                node.offset);
            return {};
        }
        result.push_back(colors[static_cast<std::size_t>(value)]);
    }
    return result;
}

/// Each corner is a vertex of its own.
osg::Mesh lineSet(const Node& node, const Source& source)
{
    const std::vector<osg::Vec3f> points = pointsOf(node);
    const std::span<const std::int32_t> corners = node.ints("coordIndex");
    source.task().countVertices(corners.size(), source.place(node.offset));
    source.task().takeMemory(corners.size() * memoryOfVertex, source.place(node.offset));
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> lines, entryOf, lineOf;
    std::uint32_t line = 0;
    bool isJoined = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const bool isCorner = corners[i] >= 0 && static_cast<std::size_t>(corners[i]) < points.size();
        if (isCorner) {
            const auto vertex = static_cast<std::uint32_t>(positions.size());
            positions.push_back(points[static_cast<std::size_t>(corners[i])]);
            entryOf.push_back(static_cast<std::uint32_t>(i));
            lineOf.push_back(line);
            if (isJoined)
                lines.insert(lines.end(), {vertex - 1, vertex});
        } else if (corners[i] >= 0) {
            source.warn(tr("a corner of a line lies beyond the %1 points").arg(static_cast<qulonglong>(points.size())),
                        node.offset);
        }
        isJoined = isCorner;
        line += corners[i] < 0 ? 1 : 0;
    }
    osg::Mesh mesh;
    mesh.colors = lineColors(node, source, entryOf, lineOf);
    mesh.lines = std::move(lines);
    mesh.positions = std::move(positions);
    return mesh.lines.empty() ? osg::Mesh() : mesh;
}

osg::Mesh pointSet(const Node& node, const Source& source)
{
    std::vector<osg::Vec3f> points = pointsOf(node);
    std::vector<osg::Color4f> colors = colorsOf(node);
    source.task().countVertices(points.size(), source.place(node.offset));
    source.task().takeMemory(points.size() * memoryOfVertex, source.place(node.offset));
    if (!colors.empty() && colors.size() < points.size()) {
        source.warn(
            tr("the colours of points were left out: there are only %1").arg(static_cast<qulonglong>(colors.size())),
            node.offset);
        colors.clear();
    }
    colors.resize(std::min(colors.size(), points.size()));
    std::vector<std::uint32_t> numbers(points.size());
    std::iota(numbers.begin(), numbers.end(), 0u);
    osg::Mesh mesh;
    mesh.positions = std::move(points);
    mesh.colors = std::move(colors);
    mesh.points = std::move(numbers);
    return mesh;
}

} // namespace

std::vector<osg::Vec3f> vectorsOf(std::span<const float> numbers)
{
    std::vector<osg::Vec3f> result;
    result.reserve(numbers.size() / 3);
    for (std::size_t i = 0; i + 2 < numbers.size(); i += 3)
        result.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
    return result;
}

osg::Vec3f vectorOf(std::span<const float> numbers, const osg::Vec3f& otherwise)
{
    return numbers.size() < 3 ? otherwise : osg::Vec3f{numbers[0], numbers[1], numbers[2]};
}

osg::Mesh meshOf(const Node& geometry, bool isTextured, const Source& source)
{
    switch (geometry.kind()) {
    case NodeKind::IndexedFaceSet:
        return faceSet(geometry, isTextured, source);
    case NodeKind::IndexedLineSet:
        return lineSet(geometry, source);
    case NodeKind::PointSet:
        return pointSet(geometry, source);
    case NodeKind::ElevationGrid:
        return elevationGrid(geometry, isTextured, source);
    case NodeKind::Extrusion:
        return extrusion(geometry, source);
    default:
        return primitiveMesh(geometry, isTextured, source);
    }
}

} // namespace files::vrml
