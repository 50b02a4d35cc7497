#pragma once

#include "ptx/readers/jt/codec/Vectors.h"
#include "ptx/readers/jt/shapes/ShapeInput.h"

namespace ptx::jt::shapes
{

/// The direction that sextant, octant and two angles of `bits` bits each stand for.
codec::Vector directionOf(std::uint32_t sextant, std::uint32_t octant, std::uint32_t theta, std::uint32_t psi,
                          unsigned bits);

/// Directions as four arrays, or as one of all parts in version 10; `hash` goes on over the arrays.
std::vector<codec::Vector> readDirections(ShapeInput& input, codec::Predictor predictor, unsigned bits,
                                          std::uint32_t& hash);

} // namespace ptx::jt::shapes
