#pragma once

#include "geometry/rays/Look.h"
#include "geometry/rays/Watch.h"
#include "host/OSGSystem/Node.h"
#include "scene/EigenValues.h"
#include "scene/Mesh.h"

#include <Eigen/Geometry>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace geometry::rays
{

/// A mesh that is drawn, once for all its uses.
struct Shape {
    std::shared_ptr<const osg::Mesh> mesh; ///< never null
    Eigen::AlignedBox3f bounds;            ///< around what it draws, in its own coordinates; not empty
};

/// One use of a shape in the tree.
struct Part {
    std::uint32_t shape = 0; ///< index into the shapes
    Look look;
    osg::MaterialPtr material; ///< that the look is of: what a switch material shows; null for none
    Eigen::Affine3d placement; ///< out of the coordinates of the mesh; finite
    bool isForward = false;    ///< it is seen before the parts that are not, wherever it is
};

/// What a picture shows. Placements lead to the world (millimetres) until `moveToStage`.
struct PartList {
    std::vector<Shape> shapes;
    std::vector<Part> parts;
    Eigen::AlignedBox3d bounds; ///< around all parts
    std::size_t leftOut = 0;    ///< uses that a transform without finite values puts nowhere
    bool tooMany = false;       ///< the limit was met; `parts` is not complete
};

/// The active geometries at and below `root` that have something to draw, a parent before its children. Ends early when
/// cancelled. What is below nodes with the tag `forward` is seen before the rest; nothing is when that is empty.
PartList collectParts(const osg::NodePtr& root, std::size_t maxParts, const Watch& watch,
                      std::string_view forward = {});

/// Changes the placements so that the bounds are centred at the origin and fit into a ball of radius 1, because the
/// ray tracer counts in single precision. Returns the size of a millimetre there.
double moveToStage(PartList& list);

/// True for a position that can be drawn: finite, and small enough that its square is.
inline bool isDrawable(const osg::Vec3f& p)
{
    constexpr float limit = 1e18f;
    return std::abs(p.x) < limit && std::abs(p.y) < limit && std::abs(p.z) < limit;
}

/// Calls `visit` with each drawable position that triangles, lines and points of `mesh` use, more than once where they
/// share it.
template <class Visitor>
void forEachUsedPosition(const osg::Mesh& mesh, Visitor visit)
{
    for (const osg::Buffer<std::uint32_t>* indices : {&mesh.triangles, &mesh.lines, &mesh.points})
        for (const std::uint32_t index : *indices)
            if (index < mesh.positions.size() && isDrawable(mesh.positions[index]))
                visit(osg::toEigen(mesh.positions[index]));
}

} // namespace geometry::rays
