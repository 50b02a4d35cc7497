#include "importer/plmxml/Occurrences.h"

namespace importer::plmxml
{

namespace
{

void note(const Reading& reading, const pugi::xml_node& occurrence, std::size_t& count,
          std::vector<zn::PassedOccurrence>& kept)
{
    if (++count > zn::PassedOccurrence::maxKept)
        return;
    const pugi::xml_attribute path = occurrence.attribute("instanceRefs");
    kept.push_back({shownText(occurrence.attribute("id").value()),
                    shownText((path ? path : occurrence.attribute("pathRefs")).value()),
                    reading.document.lineOf(occurrence)});
}

} // namespace

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
        pugi::xml_node parent = reading.index.find(ElementKind::Occurrence, above);
        if (!parent)
            parent = beginOfPath(reading, occurrence);
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

pugi::xml_node beginOfPath(const Reading& reading, const pugi::xml_node& occurrence)
{
    const std::string_view path = occurrence.attribute("pathRefs").value();
    if (path.empty() || occurrence.attribute("instanceRefs").value()[0] != 0)
        return {};
    const std::vector<std::string_view> words = wordsOf(path);
    return words.empty() ? pugi::xml_node() : reading.index.find(ElementKind::Occurrence, ownIdOf(words.front()));
}

pugi::xml_node lastInstanceOf(const Reading& reading, const pugi::xml_node& occurrence)
{
    for (const char* attribute : {"instanceRefs", "pathRefs"}) {
        const std::vector<std::string_view> words = wordsOf(occurrence.attribute(attribute).value());
        if (!words.empty() && !reading.index.find(ElementKind::Occurrence, ownIdOf(words.back())))
            return reading.references.look(occurrence, attribute, words.back(), ElementKind::Instance);
    }
    return {};
}

void noteUnplaced(const Reading& reading, const pugi::xml_node& occurrence)
{
    note(reading, occurrence, reading.facts.unplacedCount, reading.facts.unplaced);
}

void noteRepeated(const Reading& reading, const pugi::xml_node& occurrence)
{
    note(reading, occurrence, reading.facts.repeatedCount, reading.facts.repeated);
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
