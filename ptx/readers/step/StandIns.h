#pragma once

#include <Standard_Handle.hxx>

#include <cstdint>
#include <set>

class StepData_StepModel;

namespace ptx::step
{

/// Gives a point as its shape to each of `products` (numbers of product definitions in the text) that has none which
/// OCCT knows. OCCT leaves products without a shape out, and their places in assemblies with them. To be called before
/// the transfer. Assemblies need none.
/// @return those of `products` that have a shape of their own which OCCT knows
std::set<std::uint32_t> addStandIns(const Handle(StepData_StepModel) & model, const std::set<std::uint32_t>& products);

} // namespace ptx::step
