#include "cad/visualization/PLMXMLGeometry.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADPart.h"

namespace HB::Visualization
{

using namespace XML::CAD;

bool waitsForFile(const CADRepresentation& representation)
{
    const std::string& format = representation.getFormat();
    return !representation.getLocation().empty() && (format == "JT" || format == "WRL" || format == "OSB");
}

std::string geometryName(const CADRepresentation& representation, const CADPart* part, std::string& runningName)
{
    if (dynamic_cast<const CADCompoundRef*>(&representation))
        return representation.getName().empty() ? runningName + "-geom" : representation.getName();
    if (part)
        runningName = (part->getName().empty() ? part->getId() : part->getName()) + "-geom";
    return runningName;
}

} // namespace HB::Visualization
