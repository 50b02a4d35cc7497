#pragma once

#include "host/OSGSystem/Math.h"

#include <cstdint>
#include <span>
#include <vector>

namespace osg
{

/// Appends the triangles of a polygon to `triangles`: ears are cut off one after the other, so that a polygon that is
/// flat and does not cross itself is covered once, whatever its shape. It may touch itself: a hole is written as a line
/// from the outline to the hole, the way around it and the same line back. All corners are below the number of
/// positions. The work is bounded by a multiple of the corners; a polygon that would
/// take more, as none without crossings is known to, is cut without a look at its shape from there on.
void appendPolygon(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners,
                   std::vector<std::uint32_t>& triangles);

} // namespace osg
