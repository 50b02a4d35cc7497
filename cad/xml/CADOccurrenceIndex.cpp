#include "cad/xml/CADOccurrenceIndex.h"

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADReference.h"

#include <functional>

namespace HB::XML::CAD
{

std::size_t CADOccurrenceIndex::PathHash::operator()(Path path) const
{
    std::size_t hash = path->size();
    for (const auto& reference : *path)
        hash ^= std::hash<std::string_view>()(referenceId(reference)) + 0x9e3779b97f4a7c15U + (hash << 6) + (hash >> 2);
    return hash;
}

bool CADOccurrenceIndex::PathEqual::operator()(Path left, Path right) const
{
    return equalPaths(*left, *right);
}

std::vector<CADOccurrence*> CADOccurrenceIndex::find(const CADDocument& document,
                                                     const std::vector<std::string>& references,
                                                     const std::vector<std::string>& path)
{
    if (!isBuiltFrom(document, references))
        build(document, references);
    const auto found = m_byPath.find(&path);
    return found != m_byPath.end() ? found->second : std::vector<CADOccurrence*>();
}

bool CADOccurrenceIndex::isBuiltFrom(const CADDocument& document, const std::vector<std::string>& references) const
{
    return m_referenceCount == references.size() && m_occurrenceCount == document.getOccurrenceCount();
}

void CADOccurrenceIndex::build(const CADDocument& document, const std::vector<std::string>& references)
{
    m_byPath.clear();
    m_byPath.reserve(references.size());
    for (const auto& reference : references) {
        if (auto* occurrence = document.findOccurrence(reference))
            m_byPath[&occurrence->m_instanceRefs].push_back(occurrence);
    }
    m_referenceCount = references.size();
    m_occurrenceCount = document.getOccurrenceCount();
}

} // namespace HB::XML::CAD
