#pragma once

#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <unordered_map>

namespace importer::plmxml
{

/// The materials that a structure uses, each once, with what the document says of them.
class MaterialTable
{
public:
    /// Of the document that is being read; what is found goes into `structure`. Both must outlive this.
    MaterialTable(const Reading& reading, Structure& structure) : m_reading(reading), m_structure(structure) {}

    /// The index of the material that stands in `element` or that it refers to; Nothing for null and without one.
    std::uint32_t of(const pugi::xml_node& element);

private:
    StructureMaterial made(const pugi::xml_node& material) const;

    const Reading& m_reading;
    Structure& m_structure;
    std::unordered_map<std::size_t, std::uint32_t> m_indices; ///< by element
};

} // namespace importer::plmxml
