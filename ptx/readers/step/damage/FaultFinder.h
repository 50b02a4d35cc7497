#pragma once

#include "ptx/readers/step/damage/Fault.h"

#include <Standard_Handle.hxx>

#include <vector>

class StepData_StepModel;

namespace ptx::step::damage
{

/// The entities of `model`, fresh from the text, that OCCT would stumble over: something that they cannot do without is
/// not there, or a number leads nowhere. What it only grumbles about is no fault.
std::vector<Fault> findFaults(const StepData_StepModel& model);

} // namespace ptx::step::damage
