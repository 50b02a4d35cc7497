#pragma once

#include "ptx/readers/step/facets/Point.h"
#include "ptx/readers/step/p21/Entities.h"

namespace ptx::step::facets
{

/// A point or direction that entity `number` writes; nothing when it is none of three numbers.
std::optional<Point> tripleOf(const p21::Entities& entities, std::uint32_t number);

/// A place with three directions at right angles.
struct Axes {
    Point origin{};
    Point x{1, 0, 0};
    Point y{0, 1, 0};
    Point z{0, 0, 1};

    /// `point` of these axes in the space around them.
    Point placed(const Point& point) const;
    /// A direction of these axes in the space around them.
    Point turned(const Point& direction) const;
    /// `point` of the space around them in these axes.
    Point within(const Point& point) const;
};

/// The axes that the placement `number` writes. What it leaves out, or writes so that it is no direction, is that of
/// the space around.
Axes axesOf(const p21::Entities& entities, std::uint32_t number);

} // namespace ptx::step::facets
