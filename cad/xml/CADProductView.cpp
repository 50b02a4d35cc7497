#include "cad/xml/CADProductView.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADReference.h"

namespace HB::XML::CAD
{

void CADProductView::load(const TiXmlElement& element)
{
    CADBase::load(element);
    const auto isClosed = m_rootRefs.size() == 1;
    for (const TiXmlElement& child : ChildElementsOf(element)) {
        const auto* occurrence = createOccurrence(child);
        if (occurrence && !isClosed)
            m_rootRefs.push_back(occurrence->getId());
    }
}

void CADProductView::loadAttributes(const TiXmlElement& element)
{
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "state")
            m_active = m_active || std::string_view(value) == "active";
        else if (name == "rootRefs")
            splitRefList(value, m_rootRefs);
        else if (name == "primaryOccurrenceView")
            m_rootRefs.assign(1, value);
    }
}

std::vector<CADOccurrence*> CADProductView::findOccurrences(const std::vector<std::string>& path) const
{
    if (!getDocument())
        return {};
    return m_occurrenceIndex.find(*getDocument(), m_rootRefs, path);
}

} // namespace HB::XML::CAD
