#include "importer/plmxml/Occurrences.h"

namespace importer::plmxml
{

Occurrences::Occurrences(const Reading& reading, std::vector<pugi::xml_node> elements)
    : m_reading(reading), m_all(std::move(elements))
{
    for (const pugi::xml_node& occurrence : m_all) {
        const auto claim = [&](const pugi::xml_node& child) { m_above.emplace(child.hash_value(), occurrence); };
        for (const std::string_view word : wordsOf(occurrence.attribute("occurrenceRefs").value()))
            if (const pugi::xml_node child = reading.index.find(ElementKind::Occurrence, ownIdOf(word)))
                claim(child);
        eachChild(reading.document, occurrence, "Occurrence", claim);
    }
    for (const pugi::xml_node& occurrence : m_all) {
        const std::string_view above = ownIdOf(occurrence.attribute("parentRef").value());
        const pugi::xml_node parent = reading.index.find(ElementKind::Occurrence, above);
        if (parent && m_above.emplace(occurrence.hash_value(), parent).second)
            m_unlisted[parent.hash_value()].push_back(occurrence);
        m_areATree = m_areATree || occurrence.attribute("instancedRef") || occurrence.attribute("partRef");
    }
    m_areATree = m_areATree || !m_above.empty();
}

std::vector<pugi::xml_node> Occurrences::below(const pugi::xml_node& occurrence) const
{
    std::vector<pugi::xml_node> children =
        m_reading.references.followList(occurrence, "occurrenceRefs", ElementKind::Occurrence);
    eachChild(m_reading.document, occurrence, "Occurrence",
              [&children](const pugi::xml_node& child) { children.push_back(child); });
    if (const auto found = m_unlisted.find(occurrence.hash_value()); found != m_unlisted.end())
        children.insert(children.end(), found->second.begin(), found->second.end());
    return children;
}

pugi::xml_node Occurrences::above(const pugi::xml_node& occurrence) const
{
    const auto found = m_above.find(occurrence.hash_value());
    return found == m_above.end() ? pugi::xml_node() : found->second;
}

void noteUnplaced(const Reading& reading, const pugi::xml_node& occurrence)
{
    std::vector<zn::UnplacedOccurrence>& kept = reading.facts.unplaced;
    if (++reading.facts.unplacedCount <= zn::UnplacedOccurrence::maxKept)
        kept.push_back({shownText(occurrence.attribute("id").value()),
                        shownText(occurrence.attribute("instanceRefs").value()), reading.document.lineOf(occurrence)});
}

Visibility visibilityOf(const Reading& reading, const pugi::xml_node& occurrence)
{
    std::string_view value = occurrence.attribute("visible").value();
    if (value.empty())
        value =
            childOf(reading, childOf(reading, occurrence, "PropertyGroup"), "Visibility").attribute("value").value();
    if (value == "false" || value == "0")
        return Visibility::Hidden;
    return value == "true" || value == "1" ? Visibility::Shown : Visibility::AsAbove;
}

} // namespace importer::plmxml
