#pragma once

#include "importer/plmxml/ElementKind.h"
#include "importer/plmxml/IdTable.h"
#include "importer/plmxml/SourceDocument.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace importer::plmxml
{

/// The elements of a document by their kinds and ids. Of elements of one kind with the same id the first is found.
/// Elements of other namespaces are left out together with what is in them.
class ElementIndex
{
public:
    /// One pass over `document`, which must outlive this.
    explicit ElementIndex(const SourceDocument& document);

    /// What was indexed.
    const SourceDocument& document() const { return m_document; }
    /// All elements of a kind, in the order of the text; of `Other` those with an id.
    const std::vector<pugi::xml_node>& all(ElementKind kind) const { return m_elements[slot(kind)]; }
    /// The element of a kind with this id, without hash sign; null if there is none.
    pugi::xml_node find(ElementKind kind, std::string_view id) const;
    /// The number of that element among all of its kind; IdTable::None if there is none.
    std::uint32_t numberOf(ElementKind kind, std::string_view id) const { return tableOf(kind).find(id); }
    /// Whether there is such an element. For a single question: it looks through them all.
    bool has(ElementKind kind, std::string_view id) const;
    /// The same among representations and compound ones.
    pugi::xml_node findShape(std::string_view id) const;
    /// Elements whose id an earlier one of their kind has.
    std::size_t duplicateIds() const;
    /// All user values, those in elements of other namespaces included.
    std::size_t userValues() const { return m_userValues; }
    /// Elements that are shapes themselves, where others name a file.
    std::size_t internalShapes() const { return m_internalShapes; }
    /// Elements that state for whom or when something holds.
    std::size_t conditions() const { return m_conditions; }

    /// Whether elements are written with a prefix.
    bool hasPrefixes() const { return m_hasPrefixes; }

private:
    const IdTable& tableOf(ElementKind kind) const;
    static std::size_t slot(ElementKind kind) { return static_cast<std::size_t>(kind); }
    void countValuesIn(const pugi::xml_node& foreign);
    void take(const pugi::xml_node& element, std::string_view name);

    const SourceDocument& m_document;
    std::array<std::vector<pugi::xml_node>, ElementKindCount> m_elements;
    /// Made when the first element of a kind is looked for: a document that is left as it is needs few of them.
    mutable std::array<std::optional<IdTable>, ElementKindCount> m_ids;
    bool m_hasPrefixes;
    std::size_t m_conditions = 0;
    std::size_t m_internalShapes = 0;
    std::size_t m_userValues = 0;
};

} // namespace importer::plmxml
