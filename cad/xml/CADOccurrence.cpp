#include "cad/xml/CADOccurrence.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADReference.h"
#include "cad/xml/CADTransform.h"

namespace HB::XML::CAD
{

void CADOccurrence::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (const auto* occurrence = createOccurrence(child))
            m_occurrenceRefs.push_back(occurrence->getId());
        else if (const auto* transform = createTransform(child))
            m_transformRef = transform->getId();
        else if (const auto* material = createMaterial(child))
            m_materialRef = material->getId();
    }
}

void CADOccurrence::loadAttributes(const TiXmlElement& element)
{
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "materialRef")
            m_materialRef = value;
        else if (name == "transformRef")
            m_transformRef = value;
        else if (name == "occurrenceRefs")
            splitRefList(value, m_occurrenceRefs);
        else if (name == "instanceRefs")
            splitRefList(value, m_instanceRefs);
    }
}

} // namespace HB::XML::CAD
