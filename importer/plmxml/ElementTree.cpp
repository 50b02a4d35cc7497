#include "importer/plmxml/ElementTree.h"

#include "importer/plmxml/GraphTree.h"
#include "importer/plmxml/OccurrenceTree.h"
#include "importer/plmxml/Views.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

void addGraphBelow(const Reading& reading, const pugi::xml_node& element, Structure& structure)
{
    reading.facts.treeFrom = QStringLiteral("instance graph");
    GraphTree(reading, structure).addElement(element);
    reading.facts.parts = structure.parts.size();
}

void addOccurrence(const Reading& reading, const pugi::xml_node& occurrence, Structure& structure)
{
    reading.facts.treeFrom = QStringLiteral("occurrence tree");
    const Occurrences occurrences(reading, reading.index.all(ElementKind::Occurrence));
    OccurrenceTree(reading, occurrences, structure).addBelow(occurrence);
}

/// The first element of a kind with a reference to `id`.
pugi::xml_node firstOf(const Reading& reading, ElementKind kind, const char* attribute, std::string_view id)
{
    const std::vector<pugi::xml_node>& all = reading.index.all(kind);
    const auto found = std::find_if(all.begin(), all.end(), [&](const pugi::xml_node& element) {
        return ownIdOf(element.attribute(attribute).value()) == id;
    });
    return found == all.end() ? pugi::xml_node() : *found;
}

} // namespace

void addStructureBelow(const Reading& reading, std::string_view id, Structure& structure)
{
    for (const ElementKind kind : {ElementKind::Part, ElementKind::Instance, ElementKind::InstanceGraph})
        if (const pugi::xml_node element = reading.index.find(kind, id))
            return addGraphBelow(reading, element, structure);
    if (const pugi::xml_node occurrence = reading.index.find(ElementKind::Occurrence, id))
        return addOccurrence(reading, occurrence, structure);
    if (!reading.index.find(ElementKind::Other, id))
        return;
    if (const pugi::xml_node part = firstOf(reading, ElementKind::Part, "revisionRef", id))
        return addGraphBelow(reading, part, structure);
    if (const pugi::xml_node occurrence = firstOf(reading, ElementKind::Occurrence, "instancedRef", id))
        addOccurrence(reading, occurrence, structure);
}

} // namespace importer::plmxml
