#include "cad/xml/CADProductDef.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADOccurrence.h"

#include <exception>

namespace HB::XML::CAD
{

void CADProductDef::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        if (auto* graph = createInstanceGraph(child))
            m_instanceGraphs.push_back(graph);
        else if (createRepresentation(child) || createPart(child) || createMaterial(child) || createProductView(child))
            continue;
        else if (const auto* occurrence = createOccurrence(child))
            addOccurrenceRef(occurrence);
    }
}

void CADProductDef::loadAttributes(const TiXmlElement& element)
{
    CADBase::loadAttributes(element);
}

std::uint32_t CADProductDef::getInstanceGraphCount() const
{
    return static_cast<std::uint32_t>(m_instanceGraphs.size());
}

CADInstanceGraph* CADProductDef::getInstanceGraph(std::uint32_t index) const
{
    if (index >= m_instanceGraphs.size())
        throw std::exception();
    return m_instanceGraphs[index];
}

void CADProductDef::addOccurrenceRef(const CADBase* occurrence)
{
    m_occurrenceRefs.push_back(occurrence->getId());
}

std::vector<CADOccurrence*> CADProductDef::findOccurrences(const std::vector<std::string>& path) const
{
    if (!getDocument())
        return {};
    return m_occurrenceIndex.find(*getDocument(), m_occurrenceRefs, path);
}

} // namespace HB::XML::CAD
