#pragma once

#include "cad/xml/XMLTextScan.h"

class TiXmlDocument;

namespace HB::XML::CAD
{

/// Reads the file that `xml` is named after into it, if it is a regular file whose text passes scanXMLText.
/// @return false when the file is not given to the parser, or the parser refuses it; `xml` is then of no use
bool loadXMLFile(TiXmlDocument& xml, const XMLLimits& limits);

} // namespace HB::XML::CAD
