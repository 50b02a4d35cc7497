#include "cad/xml/CADPart.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADReference.h"
#include "cad/xml/CADRepresentation.h"

namespace HB::XML::CAD
{

namespace
{
constexpr Keywords<CADPart::Type, 6> typeWords{{"assembly", "minimal", "wire", "solid", "sheet", "general"}};
}

void CADPart::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (const auto* representation = createRepresentation(child)) {
            m_representationRefs.push_back(representation->getId());
        } else if (const auto* material = createMaterial(child)) {
            m_materialRef = material->getId();
        } else if (const auto* occurrence = createOccurrence(child)) {
            if (auto* productDef = getRootProductDef())
                productDef->addOccurrenceRef(occurrence);
        }
    }
}

void CADPart::loadAttributes(const TiXmlElement& element)
{
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "type")
            typeWords.read(value, m_type);
        else if (name == "materialRef")
            m_materialRef = value;
        else if (name == "partRefs")
            splitRefList(value, m_partRefs);
        else if (name == "instanceRefs")
            splitRefList(value, m_instanceRefs);
        else if (name == "representationRefs")
            splitRefList(value, m_representationRefs);
    }
}

} // namespace HB::XML::CAD
