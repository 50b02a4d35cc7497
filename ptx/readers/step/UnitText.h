#pragma once

#include <Standard_Handle.hxx>
#include <StepBasic_Unit.hxx>

#include <string>

namespace ptx::step
{

/// A unit by its symbols, e.g. "mm", "kg/m3", or by the name that the file gives it, e.g. "INCH"; empty where the file
/// tells nothing that can be understood.
std::string unitText(const StepBasic_Unit& unit);

} // namespace ptx::step
