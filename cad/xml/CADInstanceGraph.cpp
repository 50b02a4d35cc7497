#include "cad/xml/CADInstanceGraph.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADReference.h"

namespace HB::XML::CAD
{

void CADInstanceGraph::load(const TiXmlElement& element)
{
    loadAttributes(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (!createInstance(child) && !createPart(child))
            createTransform(child);
    }
}

void CADInstanceGraph::loadAttributes(const TiXmlElement& element)
{
    CADBase::loadAttributes(element);
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "rootRefs")
            splitRefList(value, m_rootRefs);
        else if (name == "rootInstanceRef")
            m_rootRefs.assign(1, value);
    }
}

} // namespace HB::XML::CAD
