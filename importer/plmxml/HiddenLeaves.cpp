#include "importer/plmxml/HiddenLeaves.h"

#include "importer/plmxml/PathTree.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace importer::plmxml
{

namespace
{

/// What a flag means below another one.
Visibility below(Visibility above, Visibility own)
{
    return own == Visibility::AsAbove ? above : own;
}

/// First of parts, once for what is around them shown and once for it hidden; then what overrides change of that along
/// their paths.
class Counter
{
public:
    Counter(const Structure& structure, const PartOrder& order)
        : m_structure(structure), m_ofParts(structure.parts.size())
    {
        for (std::size_t i = order.parts().size(); i-- > 0;) {
            const std::uint32_t part = order.parts()[i];
            for (const std::uint32_t placement : structure.parts[part].placements)
                for (const Visibility above : {Visibility::Shown, Visibility::Hidden})
                    m_ofParts[part][slot(above)] += hiddenAt(placement, ownAt(placement, above));
        }
    }

    double count()
    {
        double hidden = 0;
        for (const std::vector<std::uint32_t>& roots : m_structure.graphs)
            for (const std::uint32_t root : roots)
                hidden += hiddenAt(root, ownAt(root, Visibility::Shown));
        return hidden + changeByOverrides();
    }

private:
    static std::size_t slot(Visibility visibility) { return visibility == Visibility::Hidden ? 1 : 0; }

    Visibility ownAt(std::uint32_t placement, Visibility above) const
    {
        return below(above, m_structure.placements[placement].visibility);
    }

    double hiddenAt(std::uint32_t placement, Visibility visibility) const
    {
        const std::uint32_t part = m_structure.placements[placement].part;
        const bool isLeaf = part == Nothing || m_structure.parts[part].placements.empty();
        return isLeaf ? (visibility == Visibility::Hidden ? 1 : 0) : m_ofParts[part][slot(visibility)];
    }

    double changeByOverrides()
    {
        PathTree paths;
        std::vector<Visibility> said;
        for (const StructureOverride& each : m_structure.overrides)
            if (each.visibility != Visibility::AsAbove) {
                const std::uint32_t step = paths.add(each.path);
                said.resize(paths.size(), Visibility::AsAbove);
                said[step] = each.visibility;
            }
        std::vector<Visibility> holds(paths.size(), Visibility::Shown);
        for (std::uint32_t step = 1; step < paths.size(); ++step)
            holds[step] = below(ownAt(paths.placementOf(step), holds[paths.above(step)]), said[step]);
        std::vector<double> changes(paths.size());
        for (std::uint32_t step = static_cast<std::uint32_t>(paths.size()); --step > 0;) {
            const std::uint32_t above = paths.above(step);
            const std::uint32_t placement = paths.placementOf(step);
            const double without = hiddenAt(placement, ownAt(placement, holds[above]));
            changes[above] +=
                timesListed(paths, above, placement) * (hiddenAt(placement, holds[step]) + changes[step] - without);
        }
        return changes.front();
    }

    /// One placement may be listed several times, and an override holds at each.
    double timesListed(const PathTree& paths, std::uint32_t above, std::uint32_t placement)
    {
        const std::uint32_t part =
            above == PathTree::Top ? Nothing : m_structure.placements[paths.placementOf(above)].part;
        const auto [list, isNew] = m_listed.try_emplace(part);
        const auto note = [counts = &list->second](const std::vector<std::uint32_t>& placements) {
            for (const std::uint32_t each : placements)
                (*counts)[each] += 1;
        };
        if (isNew && part != Nothing)
            note(m_structure.parts[part].placements);
        else if (isNew && above == PathTree::Top)
            std::for_each(m_structure.graphs.begin(), m_structure.graphs.end(), note);
        const auto found = list->second.find(placement);
        return found == list->second.end() ? 0 : found->second;
    }

    const Structure& m_structure;
    std::vector<std::array<double, 2>> m_ofParts; ///< hidden leaves below each: in what is shown, in what is hidden
    std::unordered_map<std::uint32_t, std::unordered_map<std::uint32_t, double>> m_listed; ///< placements, by part
};

} // namespace

double countHiddenLeaves(const Structure& structure, const PartOrder& order)
{
    const auto isHidden = [](const auto& each) { return each.visibility == Visibility::Hidden; };
    const bool hidesSomething = std::any_of(structure.placements.begin(), structure.placements.end(), isHidden) ||
                                std::any_of(structure.overrides.begin(), structure.overrides.end(), isHidden);
    return hidesSomething ? Counter(structure, order).count() : 0;
}

} // namespace importer::plmxml
