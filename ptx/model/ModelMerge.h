#pragma once

#include "ptx/model/Model.h"

#include <cstddef>

namespace ptx::model
{

/// Adds the products of `part` to `whole`, whose bodies it follows with `firstBody` as the number of its first.
/// The views of `part` are its own and stay behind.
/// @return the occurrences at the root of `part`, in the numbers of `whole`; whoever wants them seen has to place them
std::vector<Occurrence> mergeModel(Model& whole, Model part, std::size_t firstBody);

} // namespace ptx::model
