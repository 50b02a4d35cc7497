#pragma once

#include "ptx/readers/step/annotations/Pen.h"
#include "ptx/readers/step/p21/Entities.h"

#include <optional>
#include <vector>

namespace ptx::step::annotations
{

/// Whether entity `number` is a B-spline curve that tells its knots, with or without weights.
bool isSpline(const p21::Entities& entities, std::uint32_t number);

/// Points along the B-spline curve `number`, its ends among them: some for each span between its knots. Nothing for one
/// whose knots, points and weights do not fit together. `pen` bounds the work.
std::optional<std::vector<Point>> splinePoints(const p21::Entities& entities, std::uint32_t number, Pen& pen);

} // namespace ptx::step::annotations
