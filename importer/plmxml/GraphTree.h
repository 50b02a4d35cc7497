#pragma once

#include "importer/plmxml/MaterialTable.h"
#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <unordered_map>

namespace importer::plmxml
{

/// Builds a structure from instances and parts: an instance places a part, and a part lists instances. Each element
/// becomes one placement or part, however often it is referred to.
class GraphTree
{
public:
    /// Of the document that is being read; what is found goes into `structure`. Both must outlive this.
    GraphTree(const Reading& reading, Structure& structure)
        : m_reading(reading), m_structure(structure), m_materials(reading, structure),
          m_placements(reading.index.all(ElementKind::Instance).size(), Nothing)
    {
    }

    /// The structure below the roots that `graphs` name.
    void addGraphs(const std::vector<pugi::xml_node>& graphs);
    /// The structure below one element: a graph, a part or an instance.
    void addElement(const pugi::xml_node& element);
    /// The structure of all instances and parts: at the top stand instances that no part lists, and parts that no
    /// instance places.
    void addFlat();

    /// Reads the transform of a placement, once. Before that it stands at its origin: a document that is left as it is
    /// needs few of them.
    void readTransform(std::uint32_t placement);
    /// Those of all placements that are not read yet.
    void readTransforms();
    /// The placement of an instance, by its number among all; Nothing for one that was not reached.
    std::uint32_t placementOf(std::uint32_t instance) const { return m_placements[instance]; }
    /// The part that an attribute of an occurrence puts in place of that of `placement`, a view, a revision or an
    /// element of another document, with all that is in it; Nothing where it is the same one or there is none.
    std::uint32_t otherPart(std::uint32_t placement, const pugi::xml_node& occurrence, const char* attribute);
    /// Of the structure.
    MaterialTable& materials() { return m_materials; }

private:
    std::uint32_t addPlacement(std::uint32_t number);
    std::uint32_t materialAt(const StructurePlacement& placement, const pugi::xml_node& instance);
    std::uint32_t placePart(const pugi::xml_node& part);
    std::uint32_t partAt(const pugi::xml_node& instance);
    std::uint32_t documentAt(const pugi::xml_node& element, const Reference& reference);
    pugi::xml_node viewOf(const pugi::xml_node& revision);
    bool isOf(const pugi::xml_node& part, const pugi::xml_node& element) const;
    std::uint32_t addPart(const pugi::xml_node& part);
    void addRoots(const pugi::xml_node& graph);
    void finish();
    void fill(std::uint32_t part, const pugi::xml_node& element);

    const Reading& m_reading;
    Structure& m_structure;
    MaterialTable m_materials;
    std::vector<std::uint32_t> m_placements;                 ///< by the numbers of their instances
    std::vector<pugi::xml_node> m_unread;                    ///< instances of placements without their transform
    std::unordered_map<std::size_t, std::uint32_t> m_parts;  ///< by element
    std::vector<pugi::xml_node> m_elements;                  ///< of the parts: views and revisions
    std::unordered_map<std::size_t, pugi::xml_node> m_views; ///< by revision; made when the first is asked for
    std::size_t m_filled = 0;                                ///< of the parts
};

/// The references of a graph's attributes to its roots, in their order.
std::vector<std::string_view> rootWordsOf(const pugi::xml_node& graph);

/// The first text that is not empty.
std::string firstText(std::initializer_list<std::string> texts);

/// What a revision and its item are called: the revision's name, the item's name, its number; empty for null.
std::string nameOfRevision(const Reading& reading, const pugi::xml_node& revision);

} // namespace importer::plmxml
