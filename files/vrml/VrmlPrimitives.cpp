#include "files/vrml/VrmlPrimitives.h"

#include "files/vrml/VrmlGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace files::vrml
{

namespace
{

constexpr std::uint32_t segments = 32;
constexpr std::uint32_t rings = 16;

/// A point of the outline that turns around the Y axis, with its normal in the same half plane.
struct Outline {
    float radius = 0, height = 0;
    float normalOut = 0, normalUp = 0;
    float v = 0; ///< how far up a picture that is laid around
};

/// How a picture lies upon a band.
enum class Laid { Around, OnTop, Below };

struct Shell {
    std::vector<osg::Vec3f> positions, normals;
    std::vector<osg::Vec2f> texCoords;
    std::vector<std::uint32_t> triangles;
};

void appendTriangle(Shell& shell, std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    shell.triangles.insert(shell.triangles.end(), {a, b, c});
}

/// The place on the picture that is laid upon a disc; its upper border is at the back as seen from above, and at the
/// front as seen from below.
osg::Vec2f placeOnDisc(const osg::Vec3f& position, float radius, Laid laid)
{
    const float up = laid == Laid::OnTop ? -position.z : position.z;
    return {0.5f + position.x / (2 * radius), 0.5f + up / (2 * radius)};
}

/// The band between two points of an outline, from below to above. A side of radius 0 is a tip. It begins at the back,
/// where the borders of a picture meet, and goes counter-clockwise as seen from above.
void appendBand(Shell& shell, const Outline& below, const Outline& above, Laid laid = Laid::Around)
{
    const auto first = static_cast<std::uint32_t>(shell.positions.size());
    for (std::uint32_t i = 0; i <= segments; ++i) {
        const double angle = 2 * std::numbers::pi * (i % segments) / segments;
        const auto x = float(-std::sin(angle)), z = float(-std::cos(angle));
        for (const Outline& end : {below, above}) {
            const osg::Vec3f position = {end.radius * x, end.height, end.radius * z};
            shell.positions.push_back(position);
            shell.normals.push_back({end.normalOut * x, end.normalUp, end.normalOut * z});
            shell.texCoords.push_back(laid == Laid::Around
                                          ? osg::Vec2f{float(i) / segments, end.v}
                                          : placeOnDisc(position, std::max(below.radius, above.radius), laid));
        }
    }
    for (std::uint32_t i = first; i < first + 2 * segments; i += 2) {
        if (below.radius > 0)
            appendTriangle(shell, i, i + 2, i + 1);
        if (above.radius > 0)
            appendTriangle(shell, i + 1, i + 2, i + 3);
    }
}

/// The place on the picture of a corner of a box, whose coordinates are 1 or -1, on the face across `axis`: upright on
/// the four sides, with the upper border at the back on the top, and at the front below.
osg::Vec2f placeOnFace(const std::array<float, 3>& corner, unsigned axis)
{
    const float side = corner[axis];
    const float right = axis == 0 ? -side * corner[2] : axis == 1 ? corner[0] : side * corner[0];
    const float up = axis == 1 ? -side * corner[2] : corner[1];
    return {(1 + right) / 2, (1 + up) / 2};
}

void appendBox(Shell& shell, const osg::Vec3f& size)
{
    const float half[3] = {size.x / 2, size.y / 2, size.z / 2};
    for (unsigned axis = 0; axis < 3; ++axis) {
        for (const float side : {-1.0f, 1.0f}) {
            const auto first = static_cast<std::uint32_t>(shell.positions.size());
            for (const auto& [u, v] : {std::pair(-1.0f, -1.0f), {1.0f, -1.0f}, {1.0f, 1.0f}, {-1.0f, 1.0f}}) {
                std::array<float, 3> corner = {}, n = {};
                n[axis] = corner[axis] = side;
                corner[(axis + 1) % 3] = u * side;
                corner[(axis + 2) % 3] = v;
                shell.positions.push_back({corner[0] * half[0], corner[1] * half[1], corner[2] * half[2]});
                shell.normals.push_back({n[0], n[1], n[2]});
                shell.texCoords.push_back(placeOnFace(corner, axis));
            }
            appendTriangle(shell, first, first + 1, first + 2);
            appendTriangle(shell, first, first + 2, first + 3);
        }
    }
}

void appendCone(Shell& shell, const Node& node, float radius, float height)
{
    const float slope = std::hypot(radius, height);
    if (node.flag("side", true))
        appendBand(shell, {radius, -height / 2, height / slope, radius / slope},
                   {0, height / 2, height / slope, radius / slope, 1});
    if (node.flag("bottom", true))
        appendBand(shell, {0, -height / 2, 0, -1}, {radius, -height / 2, 0, -1}, Laid::Below);
}

void appendCylinder(Shell& shell, const Node& node, float radius, float height)
{
    if (node.flag("side", true))
        appendBand(shell, {radius, -height / 2, 1, 0}, {radius, height / 2, 1, 0, 1});
    if (node.flag("bottom", true))
        appendBand(shell, {0, -height / 2, 0, -1}, {radius, -height / 2, 0, -1}, Laid::Below);
    if (node.flag("top", true))
        appendBand(shell, {radius, height / 2, 0, 1}, {0, height / 2, 0, 1}, Laid::OnTop);
}

void appendSphere(Shell& shell, float radius)
{
    const auto outline = [radius](std::uint32_t ring) {
        const double angle = std::numbers::pi * (double(ring) / rings - 0.5);
        const auto out = ring % rings == 0 ? 0.0f : float(std::cos(angle));
        const auto up = float(std::sin(angle));
        return Outline{radius * out, radius * up, out, up, float(ring) / rings};
    };
    for (std::uint32_t ring = 0; ring < rings; ++ring)
        appendBand(shell, outline(ring), outline(ring + 1));
}

Shell shellOf(const Node& node, const Source& source)
{
    Shell shell;
    const osg::Vec3f size = vectorOf(node.floats("size"), {2, 2, 2});
    const bool isCone = node.kind() == NodeKind::Cone;
    const float radius = node.number(isCone ? "bottomRadius" : "radius", 1);
    const float height = node.number("height", 2);
    const bool isSolid =
        node.kind() == NodeKind::Box ? size.x > 0 && size.y > 0 && size.z > 0 : radius > 0 && height > 0;
    if (!isSolid)
        source.warn(tr("the size of this body is not above 0"), node.offset);
    else if (node.kind() == NodeKind::Box)
        appendBox(shell, size);
    else if (isCone)
        appendCone(shell, node, radius, height);
    else if (node.kind() == NodeKind::Cylinder)
        appendCylinder(shell, node, radius, height);
    else if (node.kind() == NodeKind::Sphere)
        appendSphere(shell, radius);
    return shell;
}

} // namespace

osg::Mesh primitiveMesh(const Node& node, bool isTextured, const Source& source)
{
    Shell shell = shellOf(node, source);
    source.task().countVertices((isTextured ? 3 : 2) * shell.positions.size(), source.place(node.offset));
    source.task().takeMemory(shell.positions.size() * 3 * sizeof(osg::Vec3f) +
                                 shell.triangles.size() * sizeof(std::uint32_t),
                             source.place(node.offset));
    osg::Mesh mesh;
    mesh.positions = std::move(shell.positions);
    mesh.normals = std::move(shell.normals);
    if (isTextured)
        mesh.texCoords = std::move(shell.texCoords);
    mesh.triangles = std::move(shell.triangles);
    return mesh;
}

} // namespace files::vrml
