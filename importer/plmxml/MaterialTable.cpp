#include "importer/plmxml/MaterialTable.h"

#include "importer/plmxml/UserTexts.h"

namespace importer::plmxml
{

std::uint32_t MaterialTable::of(const pugi::xml_node& element)
{
    pugi::xml_node material = childOf(m_reading, element, "Material");
    if (!material)
        material = m_reading.references.follow(element, "materialRef", ElementKind::Material);
    if (!material)
        return Nothing;
    const auto index = static_cast<std::uint32_t>(m_structure.materials.size());
    const auto [entry, isNew] = m_indices.emplace(material.hash_value(), index);
    if (isNew) {
        m_structure.materials.push_back(material);
        m_structure.materialTags.push_back(UserTexts(m_reading).userData(material).take());
    }
    return entry->second;
}

} // namespace importer::plmxml
