#include "cad/xml/CADInstance.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADReference.h"
#include "cad/xml/CADTransform.h"

namespace HB::XML::CAD
{

void CADInstance::load(const TiXmlElement& element)
{
    CADBase::load(element);
    generateId("inst");
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (const auto* transform = createTransform(child))
            m_transformRef = transform->getId();
    }
}

void CADInstance::loadAttributes(const TiXmlElement& element)
{
    CADBase::loadAttributes(element);
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "partRef")
            m_partRef = value;
        else if (name == "materialRef")
            m_materialRef = value;
        else if (name == "transformRef")
            m_transformRef = value;
        else if (name == "representationRefs")
            splitRefList(value, m_representationRefs);
    }
}

} // namespace HB::XML::CAD
