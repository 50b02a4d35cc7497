#pragma once

#include <string>

class STEPCAFControl_Reader;

namespace ptx::step
{

/// The length unit of the file as it writes it: "mm", "m", "INCH" ...; empty when it names none. OCCT's own
/// answer cannot be trusted for every file.
std::string lengthUnit(const STEPCAFControl_Reader& reader);

} // namespace ptx::step
