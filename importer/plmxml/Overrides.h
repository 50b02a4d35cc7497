#pragma once

#include "importer/plmxml/GraphTree.h"
#include "importer/plmxml/Occurrences.h"
#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace importer::plmxml
{

/// Turns occurrences that speak of instances of a graph into overrides of the structure. Their paths lead from the root
/// down; those that name the last instance alone are completed by the occurrences above them. Of several for one place
/// the first counts.
class Overrides
{
public:
    /// What had to be done that the loader does not do.
    struct Outcome {
        bool hasCompletedPaths = false; ///< some named a part of their path only
        bool areAccumulated = false;    ///< their transforms lead to the top
    };

    /// Into `structure`, which `graph` has built. All must outlive this.
    Overrides(const Reading& reading, GraphTree& graph, Structure& structure);

    /// To be called for the occurrences of the view, then for those of no view.
    void add(const Occurrences& occurrences);
    /// To be called after that.
    Outcome finish();

private:
    using Path = std::vector<std::uint32_t>;

    const Path* pathOf(const Occurrences& occurrences, const pugi::xml_node& occurrence);
    std::optional<Path> ownPathOf(const pugi::xml_node& occurrence) const;
    bool beginsAtRoot(const Path& path) const;
    bool isWithin(const Path& path);
    void addOverride(const pugi::xml_node& occurrence, const Path& path);
    std::string partNameOf(std::uint32_t placement) const;
    bool areAccumulated() const;
    void makeLocal();
    Matrix4 worldOf(const Path& path) const;

    const Reading& m_reading;
    GraphTree& m_graph;
    Structure& m_structure;
    std::unordered_set<std::uint32_t> m_roots;                                     ///< placements
    std::unordered_map<std::uint32_t, std::unordered_set<std::uint32_t>> m_within; ///< placements of parts
    std::unordered_map<std::size_t, std::optional<Path>> m_paths;                  ///< by occurrence
    std::map<Path, std::size_t> m_byPath;                                          ///< overrides
    std::size_t m_steps = 0;                                                       ///< of all paths
    Outcome m_outcome;
};

} // namespace importer::plmxml
