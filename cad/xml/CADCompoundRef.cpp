#include "cad/xml/CADCompoundRef.h"

#include "cad/xml/CADElementWalk.h"

namespace HB::XML::CAD
{

namespace
{
constexpr Keywords<CADRepresentation::Type, 3> typeWords{{"construction", "weld", "midsurface"},
                                                         CADRepresentation::Type::Construction};
}

void CADCompoundRef::loadAttributes(const TiXmlElement& element)
{
    CADRepresentation::loadAttributes(element);
    auto type = getType();
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "type")
            typeWords.read(value, type);
    }
    setType(type);
}

} // namespace HB::XML::CAD
