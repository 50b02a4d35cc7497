#pragma once

#include <optional>
#include <string>

class StepRepr_Representation;

namespace ptx::step
{

/// The tag of a product's physical material, if these values of a property are its name, or its density in a unit of a
/// mass by a volume; nothing if they are anything else.
///
/// OCCT has a road of its own, which takes every text for a name and gives 7,850 kg/m3 as 0.00785.
std::optional<std::string> materialTag(const StepRepr_Representation& values);

} // namespace ptx::step
