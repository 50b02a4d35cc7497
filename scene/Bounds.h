#pragma once

#include "host/OSGSystem/Math.h"
#include "host/OSGSystem/Node.h"

#include <limits>

namespace osg
{

/// A box along the axes; empty until it holds a point.
struct Box {
    double low[3] = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::infinity()};
    double high[3] = {-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                      -std::numeric_limits<double>::infinity()};

    bool isEmpty() const { return !(low[0] <= high[0]); }
    double middle(int axis) const { return (low[axis] + high[axis]) / 2; }
    double size(int axis) const { return high[axis] - low[axis]; }
    void add(double x, double y, double z);
};

/// The product of the transforms from the root of the tree down to `node`, its own included; the identity for null.
Matrix worldMatrix(const NodePtr& node);

/// The tight box around all vertices at and below `node` that triangles, lines or points use, in millimetres of the
/// whole tree; inactive nodes count as well. Vertices that are not finite do not count.
Box worldBounds(const NodePtr& node);

} // namespace osg
