#pragma once

#include <cstddef>

class StepData_StepModel;

namespace ptx::step::damage
{

/// Brings the parts of all colours of `model` between 0 and 1: for one beyond that OCCT gives the whole file up.
/// @return how many colours were beyond it
std::size_t limitColours(const StepData_StepModel& model);

} // namespace ptx::step::damage
