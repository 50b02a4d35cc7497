#include "cad/xml/CADRepresentation.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADTransform.h"

namespace HB::XML::CAD
{

namespace
{
constexpr Keywords<CADRepresentation::Type, 4> typeWords{{"default", "simplified", "flat", "user"}};
}

void CADRepresentation::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (const auto* transform = createTransform(child))
            m_transformRef = transform->getId();
        else if (const auto* compound = createCompoundRep(child))
            m_compoundRefs.push_back(compound->getId());
        else
            createMaterial(child);
    }
}

void CADRepresentation::loadAttributes(const TiXmlElement& element)
{
    CADBase::loadAttributes(element);
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "type")
            typeWords.read(value, m_type);
        else if (name == "format")
            m_format = value;
        else if (name == "location")
            m_location = value;
        else if (name == "transformRef")
            m_transformRef = value;
    }
}

} // namespace HB::XML::CAD
