#include "importer/plmxml/ElementIndex.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

/// The next node in the order of the text after `node`, which is below `top`; not one within `node` unless `descends`.
pugi::xml_node nextOf(pugi::xml_node node, const pugi::xml_node& top, bool descends)
{
    if (const pugi::xml_node child = node.first_child(); child && descends)
        return child;
    while (node != top) {
        if (const pugi::xml_node sibling = node.next_sibling())
            return sibling;
        node = node.parent();
    }
    return {};
}

} // namespace

ElementIndex::ElementIndex(const SourceDocument& document)
    : m_document(document), m_hasPrefixes(document.nameOf(document.root()).data() != document.root().name())
{
    const pugi::xml_node root = document.root();
    for (pugi::xml_node node = root.first_child(); node;) {
        const std::string_view name = document.nameOf(node);
        const pugi::xml_node after = nextOf(node, root, !name.empty());
        if (!name.empty())
            take(node, name);
        else
            countValuesIn(node);
        node = after;
    }
}

/// What foreign elements hold says nothing of the structure.
void ElementIndex::countValuesIn(const pugi::xml_node& foreign)
{
    for (pugi::xml_node node = nextOf(foreign, foreign, true); node; node = nextOf(node, foreign, true))
        m_userValues += m_document.nameOf(node) == "UserValue" ? 1 : 0;
}

void ElementIndex::take(const pugi::xml_node& element, std::string_view name)
{
    const ElementKind kind = kindOfName(name);
    m_userValues += kind == ElementKind::UserValue ? 1 : 0;
    if (kind != ElementKind::Other || element.attribute("id"))
        m_elements[slot(kind)].push_back(element);
    // Those of dates, lots and serial numbers have names of their own.
    m_conditions += kind == ElementKind::Other && (name == "VariantCondition" || name.ends_with("Effectivity")) ? 1 : 0;
    m_hasPrefixes = m_hasPrefixes || name.data() != element.name();
    m_internalShapes += name == "InternalRep" ? 1 : 0;
}

const IdTable& ElementIndex::tableOf(ElementKind kind) const
{
    std::optional<IdTable>& table = m_ids[slot(kind)];
    if (!table)
        table.emplace(all(kind));
    return *table;
}

pugi::xml_node ElementIndex::find(ElementKind kind, std::string_view id) const
{
    const std::uint32_t number = numberOf(kind, id);
    return number == IdTable::None ? pugi::xml_node() : all(kind)[number];
}

bool ElementIndex::has(ElementKind kind, std::string_view id) const
{
    const std::vector<pugi::xml_node>& elements = all(kind);
    return !id.empty() && std::any_of(elements.begin(), elements.end(), [id](const pugi::xml_node& element) {
        return element.attribute("id").value() == id;
    });
}

std::size_t ElementIndex::duplicateIds() const
{
    std::size_t count = 0;
    for (std::size_t kind = 0; kind < ElementKindCount; ++kind)
        count += tableOf(static_cast<ElementKind>(kind)).duplicates();
    return count;
}

pugi::xml_node ElementIndex::findShape(std::string_view id) const
{
    const pugi::xml_node representation = find(ElementKind::Representation, id);
    return representation ? representation : find(ElementKind::CompoundRep, id);
}

} // namespace importer::plmxml
