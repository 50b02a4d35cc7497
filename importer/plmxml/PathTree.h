#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace importer::plmxml
{

/// Paths of placements from the root down, which share their beginnings. A step is the number of a beginning; those of
/// longer paths are greater.
class PathTree
{
public:
    /// No step.
    static constexpr std::uint32_t NoStep = ~std::uint32_t(0);
    /// The beginning of all paths.
    static constexpr std::uint32_t Top = 0;

    /// Takes a path in, and gives its last step.
    std::uint32_t add(const std::vector<std::uint32_t>& path)
    {
        std::uint32_t at = Top;
        for (const std::uint32_t placement : path) {
            const auto [entry, isNew] = m_below.emplace(keyOf(at, placement), m_steps);
            if (isNew) {
                ++m_steps;
                m_ends.push_back({at, placement});
            }
            at = entry->second;
        }
        return at;
    }

    /// The step of `placement` below another; NoStep if no path leads there.
    std::uint32_t below(std::uint32_t step, std::uint32_t placement) const
    {
        if (step == NoStep || m_below.empty())
            return NoStep;
        const auto found = m_below.find(keyOf(step, placement));
        return found == m_below.end() ? NoStep : found->second;
    }

    /// The step above one that is not Top.
    std::uint32_t above(std::uint32_t step) const { return m_ends[step - 1].above; }
    /// The placement of a step that is not Top.
    std::uint32_t placementOf(std::uint32_t step) const { return m_ends[step - 1].placement; }

    /// How many steps there are, Top included.
    std::size_t size() const { return m_steps; }

private:
    static std::uint64_t keyOf(std::uint32_t step, std::uint32_t placement)
    {
        return std::uint64_t(step) << 32 | placement;
    }

    struct End {
        std::uint32_t above;
        std::uint32_t placement;
    };

    std::unordered_map<std::uint64_t, std::uint32_t> m_below;
    std::vector<End> m_ends; ///< of the steps after Top
    std::uint32_t m_steps = 1;
};

} // namespace importer::plmxml
