#pragma once

#include <Standard_Handle.hxx>

#include <string>

class Standard_Transient;
class STEPCAFControl_Reader;

namespace ptx::step
{

/// The length unit of the file as it writes it: "mm", "m", "INCH" ...; empty when it names none. OCCT's own
/// answer cannot be trusted for every file.
std::string lengthUnit(const STEPCAFControl_Reader& reader);

/// How many millimetres the length unit of `context` has, 0 when that is no context with a length unit.
double millimetresIn(const Handle(Standard_Transient) & context);

} // namespace ptx::step
