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
    for (const TiXmlAttribute& attribute : AttributesOf(element)) {
        const auto& name = attribute.NameTStr();
        if (name == "partRef")
            m_partRef = attribute.Value();
        else if (name == "materialRef")
            m_materialRef = attribute.Value();
        else if (name == "transformRef")
            m_transformRef = attribute.Value();
        else if (name == "representationRefs")
            splitRefList(attribute.Value(), m_representationRefs);
    }
}

} // namespace HB::XML::CAD
