#include "importer/plmxml/MaterialTable.h"

#include "importer/plmxml/Numbers.h"
#include "importer/plmxml/UserTexts.h"

namespace importer::plmxml
{

std::uint32_t MaterialTable::of(const pugi::xml_node& element)
{
    const bool hasAny = !m_reading.index.all(ElementKind::Material).empty();
    pugi::xml_node material = hasAny ? childOf(m_reading, element, "Material") : pugi::xml_node();
    if (!material)
        material = m_reading.references.follow(element, "materialRef", ElementKind::Material);
    if (!material)
        return Nothing;
    const auto index = static_cast<std::uint32_t>(m_structure.materials.size());
    const auto [entry, isNew] = m_indices.emplace(material.hash_value(), index);
    if (isNew) {
        m_structure.materials.push_back(made(material));
        m_structure.materialTags.push_back(UserTexts(m_reading).userData(material).take());
    }
    return entry->second;
}

/// Words among its numbers would make the document unreadable for the loader.
StructureMaterial MaterialTable::made(const pugi::xml_node& material) const
{
    StructureMaterial made{nameOf(m_reading, material), {}};
    for (const char* name : {"ambient", "diffuse", "specular", "emissive", "shininess", "alpha"}) {
        const pugi::xml_attribute attribute = material.attribute(name);
        if (!attribute)
            continue;
        std::optional<std::vector<double>> numbers = numbersIn(attribute.value());
        if (numbers && !numbers->empty())
            made.numbers.emplace_back(name, std::move(*numbers));
        else
            ++m_reading.facts.badMaterialNumbers;
    }
    return made;
}

} // namespace importer::plmxml
