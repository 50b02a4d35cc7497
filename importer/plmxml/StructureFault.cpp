#include "importer/plmxml/StructureFault.h"

#include "importer/plmxml/References.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

/// Of the kinds that placements are made of.
pugi::xml_node elementOf(const ElementIndex& index, const StructurePlacement& placement)
{
    for (const ElementKind kind : {ElementKind::Instance, ElementKind::Part, ElementKind::Occurrence}) {
        const std::vector<pugi::xml_node>& all = index.all(kind);
        const auto found = std::find_if(all.begin(), all.end(), [&placement](const pugi::xml_node& element) {
            return element.hash_value() == placement.element;
        });
        if (found != all.end())
            return *found;
    }
    return {};
}

} // namespace

Refusal refusalOf(const StructureFault& fault, const ElementIndex& index, const Structure& structure)
{
    const pugi::xml_node element = elementOf(index, structure.placements[fault.placement]);
    return {fault.kind,
            shownText(index.document().nameOf(element)),
            shownText(element.attribute("id").value()),
            index.document().lineOf(element),
            fault.allowed,
            fault.places};
}

} // namespace importer::plmxml
