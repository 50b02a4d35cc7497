#pragma once

#include "ptx/readers/step/damage/Fault.h"

#include <vector>

class StepData_StepModel;

namespace ptx::step::damage
{

/// The occurrences that put a product into itself, directly or through others: as few as open all rings, found from the
/// topmost products on, in the order of the file. OCCT goes round such a ring until its stack ends.
std::vector<Fault> findRings(const StepData_StepModel& model);

} // namespace ptx::step::damage
