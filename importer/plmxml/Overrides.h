#pragma once

#include "importer/plmxml/OccurrencePaths.h"

#include <map>
#include <vector>

namespace importer::plmxml
{

/// Turns occurrences that speak of instances of a graph into overrides of the structure. Of several for one place the
/// first counts.
class Overrides
{
public:
    /// What had to be done that the loader does not do.
    struct Outcome {
        bool hasCompletedPaths = false; ///< some named a part of their path only
        bool areAccumulated = false;    ///< their transforms lead to the top
    };

    /// Into `structure`, which `graph` has built. All must outlive this.
    Overrides(const Reading& reading, GraphTree& graph, Structure& structure)
        : m_reading(reading), m_graph(graph), m_structure(structure), m_paths(reading, graph, structure)
    {
    }

    /// To be called for the occurrences of the view, then for those of no view.
    void add(const Occurrences& occurrences);
    /// To be called after that.
    Outcome finish();

private:
    using Path = OccurrencePaths::Path;

    void addParts(const Occurrences& occurrences);
    std::uint32_t otherPart(const pugi::xml_node& occurrence, std::uint32_t placement);
    void addOverride(const pugi::xml_node& occurrence, const Path& path);
    std::vector<ShapePiece> ownShapeOf(const pugi::xml_node& occurrence, std::uint32_t part, std::uint32_t placement);
    void readTransforms();
    bool areAccumulated() const;
    void makeLocal();
    Matrix4 worldOf(const Path& path) const;

    const Reading& m_reading;
    GraphTree& m_graph;
    Structure& m_structure;
    OccurrencePaths m_paths;
    std::map<Path, std::uint32_t> m_otherParts; ///< of places that an occurrence exchanges the part of
    std::map<Path, std::size_t> m_byPath;       ///< overrides
    Outcome m_outcome;
};

} // namespace importer::plmxml
