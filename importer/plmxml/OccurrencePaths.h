#pragma once

#include "importer/plmxml/GraphTree.h"
#include "importer/plmxml/Occurrences.h"
#include "importer/plmxml/PathTree.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace importer::plmxml
{

/// Finds the places that occurrences of a graph speak of. Their paths lead from the root down; those that name the last
/// instance alone, or begin with another occurrence, are completed by the occurrences above them.
class OccurrencePaths
{
public:
    /// Placements from the root down.
    using Path = std::vector<std::uint32_t>;

    /// In `structure`, which `graph` has built. All must outlive this.
    OccurrencePaths(const Reading& reading, const GraphTree& graph, const Structure& structure);

    /// The path of an occurrence, which is among `occurrences`; null where it leads to no place.
    const Path* find(const Occurrences& occurrences, const pugi::xml_node& occurrence);
    /// `part` stands at the end of `path` from now on.
    void exchange(const Path& path, std::uint32_t part);
    /// To be called when all is exchanged: what led nowhere before may lead into another part now.
    void forget();
    /// Whether one had to be completed.
    bool hasCompleted() const { return m_hasCompleted; }

private:
    std::optional<Path> ownPathOf(const pugi::xml_node& occurrence) const;
    bool append(const pugi::xml_node& occurrence, bool isWhole, int depth, Path& path) const;
    std::optional<Path> wholePathOf(const pugi::xml_node& occurrence, const pugi::xml_node& above);
    bool beginsAtRoot(const Path& path) const;
    bool isWithin(const Path& path);
    std::uint32_t partAt(std::uint32_t step, std::uint32_t placement) const;

    const Reading& m_reading;
    const GraphTree& m_graph;
    const Structure& m_structure;
    std::unordered_set<std::uint32_t> m_roots;                                     ///< placements
    std::unordered_map<std::uint32_t, std::unordered_set<std::uint32_t>> m_within; ///< placements of parts
    std::unordered_map<std::size_t, std::optional<Path>> m_paths;                  ///< by occurrence
    PathTree m_exchanges;                                                          ///< to places with another part
    std::vector<std::uint32_t> m_otherParts;                                       ///< by step; Nothing on the way
    std::size_t m_steps = 0;                                                       ///< of all paths
    bool m_hasCompleted = false;
};

} // namespace importer::plmxml
