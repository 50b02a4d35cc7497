#pragma once

#include <string>

namespace HB::XML::CAD
{
class CADPart;
class CADRepresentation;
} // namespace HB::XML::CAD

namespace HB::Visualization
{

/// Whether a representation of an assembly's part names a file of a format that is brought in.
bool waitsForFile(const XML::CAD::CADRepresentation& representation);

/// The name of the node for the geometry of `representation`: a compound's own, and for a plain one, whose own name is
/// lost, that of `part`, which may be null. `runningName` is the name in force, which a plain one changes.
std::string geometryName(const XML::CAD::CADRepresentation& representation, const XML::CAD::CADPart* part,
                         std::string& runningName);

} // namespace HB::Visualization
