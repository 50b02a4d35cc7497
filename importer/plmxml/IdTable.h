#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace importer::plmxml
{

/// Finds elements by their ids, which stay in the document. Of elements with the same id the first is found.
///
/// A look-up goes to one place of memory and to the text of one id, not to elements: documents have hundreds of
/// thousands.
class IdTable
{
public:
    /// No element.
    static constexpr std::uint32_t None = ~std::uint32_t(0);

    /// Of `elements`, whose document must outlive this; those without id are not found.
    explicit IdTable(const std::vector<pugi::xml_node>& elements);

    /// The number of the element with this id among the elements; None if there is none.
    std::uint32_t find(std::string_view id) const;
    /// Elements whose id an earlier one has.
    std::size_t duplicates() const { return m_duplicates; }

private:
    struct Slot {
        std::uint32_t number = None;
        std::uint32_t hash = 0; ///< a part of it, so that few texts have to be compared
        const char* id = nullptr;
    };

    std::size_t slotOf(std::string_view id, std::uint32_t hash) const;

    std::vector<Slot> m_slots; ///< a power of two, at least half of them empty
    std::size_t m_duplicates = 0;
};

} // namespace importer::plmxml
