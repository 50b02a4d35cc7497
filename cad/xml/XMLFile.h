#pragma once

#include "cad/xml/CADFault.h"

#include <optional>

class TiXmlDocument;

namespace HB::XML::CAD
{

/// Reads the file that `xml` is named after into it, if it is a regular file whose text passes scanXMLText. With
/// `keepsPlaces` the parser keeps the rows and columns, for a quarter of its time.
/// @return why the file was not given to the parser, or the parser refused it, `xml` is then of no use; else nothing
std::optional<CADFault> loadXMLFile(TiXmlDocument& xml, const XMLLimits& limits, bool keepsPlaces);

} // namespace HB::XML::CAD
