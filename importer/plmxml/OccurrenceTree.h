#pragma once

#include "importer/plmxml/MaterialTable.h"
#include "importer/plmxml/Occurrences.h"
#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace importer::plmxml
{

/// Builds a structure from occurrences that are a tree themselves, as PDM systems write it: their transforms lead to
/// the top, and each stands at one place. Leaves of the same revision share a part.
class OccurrenceTree
{
public:
    /// Of the document that is being read; what is found goes into `structure`. All must outlive this.
    OccurrenceTree(const Reading& reading, const Occurrences& occurrences, Structure& structure)
        : m_reading(reading), m_occurrences(occurrences), m_structure(structure), m_materials(reading, structure)
    {
    }

    /// The tree of `view`; of all occurrences where it is null.
    void add(const pugi::xml_node& view);
    /// The tree below one occurrence, which stands at the origin.
    void addBelow(const pugi::xml_node& occurrence);

private:
    /// What an occurrence is an occurrence of.
    struct Origin {
        pugi::xml_node instance;
        pugi::xml_node view;
        pugi::xml_node revision;
        std::uint32_t document = FileTable::None; ///< where another document has it
    };
    /// An occurrence whose children are still to be placed.
    struct Open {
        pugi::xml_node occurrence;
        std::uint32_t placement;
        Matrix4 world;
    };

    std::vector<pugi::xml_node> rootsOf(const pugi::xml_node& view) const;
    std::uint32_t place(const pugi::xml_node& occurrence, std::uint32_t above, const Matrix4& outer);
    void grow(std::vector<std::uint32_t> roots);
    void addMaterials(std::uint32_t index, const pugi::xml_node& occurrence, const Origin& origin);
    void expand(const Open& open);
    void find(const pugi::xml_node& occurrence, const char* attribute, Origin& origin) const;
    std::uint32_t elementOfOther(const pugi::xml_node& element, const char* attribute) const;
    Origin originOf(const pugi::xml_node& occurrence) const;
    void fillNames(StructurePlacement& placement, const pugi::xml_node& occurrence, const Origin& origin) const;
    std::string partNameOf(const Origin& origin, const std::string& otherwise) const;
    void addAssembly(std::uint32_t placement, const pugi::xml_node& occurrence, std::vector<std::uint32_t> children);
    void addLeaf(std::uint32_t placement, const pugi::xml_node& occurrence);
    void addDocument(std::uint32_t placement, std::uint32_t document);
    std::uint32_t makePart(const Origin& origin, const std::string& name);
    void dropShapesOfAssemblies();
    void noteUnplacedAmong(const std::vector<pugi::xml_node>& occurrences) const;

    const Reading& m_reading;
    const Occurrences& m_occurrences;
    Structure& m_structure;
    MaterialTable m_materials;
    std::vector<Open> m_open;
    std::vector<std::uint32_t> m_above;                      ///< the placement around each; Nothing at the top
    std::size_t m_steps = 0;                                 ///< of the paths of all overrides
    std::unordered_set<std::size_t> m_placed;                ///< occurrences
    std::unordered_map<std::string, std::uint32_t> m_leaves; ///< parts by what they are of
    std::unordered_set<std::size_t> m_origins;               ///< different things that are placed
};

} // namespace importer::plmxml
