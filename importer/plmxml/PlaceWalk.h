#pragma once

#include "importer/plmxml/PathTree.h"
#include "importer/plmxml/Structure.h"

#include <vector>

namespace importer::plmxml
{

/// A place that a walk comes to.
struct Place {
    std::uint32_t placement = Nothing;
    const StructureOverride* override = nullptr; ///< that holds here; null if there is none
    std::size_t depth = 0;                       ///< from 0
    std::size_t graph = 0;                       ///< that it is in
};

/// Visits the places of a structure, parents first, without recursion.
class PlaceWalk
{
public:
    /// Deeper structures are cut there: they contain themselves.
    static constexpr std::size_t MaxDepth = 1000;
    /// Where a walk ends.
    static constexpr std::size_t MaxPlaces = 20'000'000;

    /// Over `structure`, which must outlive this.
    explicit PlaceWalk(const Structure& structure) : m_structure(structure)
    {
        for (const StructureOverride& each : structure.overrides)
            note(each);
    }

    /// Calls `enter` for each place, and `leave` once those below it were visited; they are not when `enter` gives
    /// false. False when the structure was cut or is too large.
    template <class Enter, class Leave>
    bool run(const Enter& enter, const Leave& leave) const;

private:
    struct Level {
        const std::vector<std::uint32_t>* placements;
        std::size_t next;
        std::uint32_t step; ///< in the tree of overrides
        Place place;        ///< that the level is below; no placement at the top
    };

    void note(const StructureOverride& each)
    {
        const std::uint32_t step = m_paths.add(each.path);
        m_overrides.resize(m_paths.size());
        m_overrides[step] = &each;
    }

    const Structure& m_structure;
    PathTree m_paths;                                  ///< of the overrides
    std::vector<const StructureOverride*> m_overrides; ///< by step; null on the way
};

template <class Enter, class Leave>
bool PlaceWalk::run(const Enter& enter, const Leave& leave) const
{
    std::size_t places = 0;
    bool isWhole = true;
    std::vector<Level> levels;
    for (std::size_t graph = 0; graph < m_structure.graphs.size(); ++graph) {
        levels.push_back({&m_structure.graphs[graph], 0, PathTree::Top, {}});
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.placements->size()) {
                if (level.place.placement != Nothing)
                    leave(level.place);
                levels.pop_back();
                continue;
            }
            const std::uint32_t placement = (*level.placements)[level.next++];
            const std::uint32_t step = m_paths.below(level.step, placement);
            const Place place{placement, step == PathTree::NoStep ? nullptr : m_overrides[step], levels.size() - 1,
                              graph};
            if (++places > MaxPlaces)
                return false;
            const std::uint32_t part = m_structure.placements[placement].part;
            const bool isDeep = levels.size() >= MaxDepth;
            isWhole = isWhole && !(isDeep && part != Nothing && !m_structure.parts[part].placements.empty());
            if (!enter(place))
                continue;
            if (part == Nothing || isDeep || m_structure.parts[part].placements.empty())
                leave(place);
            else
                levels.push_back({&m_structure.parts[part].placements, 0, step, place});
        }
    }
    return isWhole;
}

} // namespace importer::plmxml
