#pragma once

#include "importer/plmxml/Structure.h"

#include <unordered_map>
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
    static constexpr std::uint32_t NoStep = ~std::uint32_t(0);
    struct Step {
        const StructureOverride* override = nullptr;
    };
    struct Level {
        const std::vector<std::uint32_t>* placements;
        std::size_t next;
        std::uint32_t step; ///< in the tree of overrides
        Place place;        ///< that the level is below; no placement at the top
    };

    static std::uint64_t keyOf(std::uint32_t step, std::uint32_t placement)
    {
        return std::uint64_t(step) << 32 | placement;
    }

    void note(const StructureOverride& each)
    {
        std::uint32_t at = 0;
        for (const std::uint32_t placement : each.path) {
            const auto [entry, isNew] =
                m_below.emplace(keyOf(at, placement), static_cast<std::uint32_t>(m_steps.size()));
            if (isNew)
                m_steps.emplace_back();
            at = entry->second;
        }
        m_steps[at].override = &each;
    }

    std::uint32_t below(std::uint32_t step, std::uint32_t placement) const
    {
        if (step == NoStep || m_steps.size() == 1)
            return NoStep;
        const auto found = m_below.find(keyOf(step, placement));
        return found == m_below.end() ? NoStep : found->second;
    }

    const Structure& m_structure;
    std::vector<Step> m_steps = std::vector<Step>(1);
    std::unordered_map<std::uint64_t, std::uint32_t> m_below;
};

template <class Enter, class Leave>
bool PlaceWalk::run(const Enter& enter, const Leave& leave) const
{
    std::size_t places = 0;
    bool isWhole = true;
    std::vector<Level> levels;
    for (std::size_t graph = 0; graph < m_structure.graphs.size(); ++graph) {
        levels.push_back({&m_structure.graphs[graph], 0, 0, {}});
        while (!levels.empty()) {
            Level& level = levels.back();
            if (level.next == level.placements->size()) {
                if (level.place.placement != Nothing)
                    leave(level.place);
                levels.pop_back();
                continue;
            }
            const std::uint32_t placement = (*level.placements)[level.next++];
            const std::uint32_t step = below(level.step, placement);
            const Place place{placement, step == NoStep ? nullptr : m_steps[step].override, levels.size() - 1, graph};
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
