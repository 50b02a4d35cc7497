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
    for (const TiXmlAttribute& attribute : AttributesOf(element)) {
        const auto& name = attribute.NameTStr();
        if (name == "type")
            typeWords.read(attribute.Value(), m_type);
        else if (name == "format")
            m_format = attribute.Value();
        else if (name == "location")
            m_location = attribute.Value();
        else if (name == "transformRef")
            m_transformRef = attribute.Value();
    }
}

} // namespace HB::XML::CAD
