#pragma once

#include "ptx/readers/step/annotations/Drawing.h"

#include <optional>
#include <vector>

namespace ptx::step::annotations
{

class Pen;

/// The corners of a closed outline, none of them twice.
using Outline = std::vector<Point>;

/// One outline around the area between the outline that reaches farthest and the others, which are holes in it: a line
/// leads to each hole and back. Nothing without outlines, or when looking for these lines would be too much for `pen`.
std::optional<Outline> withHoles(std::vector<Outline> outlines, Pen& pen);

} // namespace ptx::step::annotations
