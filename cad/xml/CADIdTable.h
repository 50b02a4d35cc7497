#pragma once

#include "cad/xml/CADReference.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace HB::XML::CAD
{

/// Elements of one kind in the order of their registration, with an ordered map from id to place in that list.
/// The elements are borrowed. Look-ups copy no text.
template <class Element>
class CADIdTable
{
public:
    CADIdTable() = default;
    CADIdTable(const CADIdTable&) = delete;
    CADIdTable& operator=(const CADIdTable&) = delete;

    /// Appends an element under the id that it has now; null is ignored. Of several elements with one id all stay in
    /// the list, and the id leads to the last.
    void add(Element* element)
    {
        if (!element)
            return;
        const auto place = static_cast<std::uint32_t>(m_elements.size());
        m_elements.push_back(element);
        // Writers number their ids upwards, so a new one mostly belongs right behind the one before it.
        const auto hint = m_newest == m_places.end() ? m_newest : std::next(m_newest);
        m_newest = m_places.insert_or_assign(hint, element->getId(), place);
    }

    /// The element that a reference text leads to; null for one into another file and for an unknown id.
    Element* find(std::string_view reference) const
    {
        const auto [file, id] = referenceParts(reference);
        return file.empty() ? findById(id) : nullptr;
    }

    /// The element with this id, taken as it stands; null if there is none.
    Element* findById(std::string_view id) const
    {
        const auto entry = m_places.find(id);
        return entry != m_places.end() && entry->second < m_elements.size() ? m_elements[entry->second] : nullptr;
    }

    /// All elements in the order of their registration; none is null.
    const std::vector<Element*>& elements() const { return m_elements; }

private:
    using Places = std::map<std::string, std::uint32_t, std::less<>>;

    Places m_places;
    std::vector<Element*> m_elements;
    typename Places::iterator m_newest = m_places.end();
};

} // namespace HB::XML::CAD
