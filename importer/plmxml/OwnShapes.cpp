#include "importer/plmxml/OwnShapes.h"

#include "importer/plmxml/PathTree.h"
#include "importer/plmxml/PlaceWalk.h"

namespace importer::plmxml
{

namespace
{

std::uint32_t lastOf(std::size_t size)
{
    return static_cast<std::uint32_t>(size - 1);
}

class Separation
{
public:
    explicit Separation(Structure& structure) : m_structure(structure)
    {
        std::vector<std::pair<std::uint32_t, const StructureOverride*>> ends;
        for (const StructureOverride& each : structure.overrides)
            if (!each.pieces.empty() || each.part != Nothing)
                ends.emplace_back(m_paths.add(each.path), &each);
        m_copies.resize(m_paths.size(), Nothing);
        m_overrides.resize(m_paths.size());
        for (const auto& [step, override] : ends)
            m_overrides[step] = override;
    }

    bool run()
    {
        for (std::vector<std::uint32_t>& roots : m_structure.graphs)
            exchange(roots, PathTree::Top);
        for (std::size_t i = 0; i < m_open.size() && m_isWhole; ++i)
            separate(m_open[i]);
        for (StructureOverride& each : m_structure.overrides)
            redirect(each.path);
        return m_isWhole;
    }

private:
    /// Puts the copies of those on the way into a list of placements.
    void exchange(std::vector<std::uint32_t>& placements, std::uint32_t step)
    {
        for (std::uint32_t& placement : placements)
            if (const std::uint32_t below = m_paths.below(step, placement); below != PathTree::NoStep)
                placement = copyOf(placement, below);
    }

    std::uint32_t copyOf(std::uint32_t placement, std::uint32_t step)
    {
        if (m_copies[step] == Nothing) {
            m_structure.placements.push_back(StructurePlacement(m_structure.placements[placement]));
            m_copies[step] = lastOf(m_structure.placements.size());
            m_open.push_back(step);
        }
        return m_copies[step];
    }

    void separate(std::uint32_t step)
    {
        const StructureOverride* const override = m_overrides[step];
        const bool isExchanged = override && override->part != Nothing;
        const std::uint32_t shared = isExchanged ? override->part : m_structure.placements[m_copies[step]].part;
        StructurePart part;
        if (shared != Nothing)
            part = m_structure.parts[shared];
        m_copied += 1 + part.placements.size() + part.tags.size();
        m_isWhole = m_copied <= PlaceWalk::MaxPlaces;
        if (override && !override->pieces.empty())
            part.pieces = override->pieces;
        exchange(part.placements, step);
        m_structure.parts.push_back(std::move(part));
        m_structure.placements[m_copies[step]].part = lastOf(m_structure.parts.size());
    }

    void redirect(std::vector<std::uint32_t>& path) const
    {
        std::uint32_t step = PathTree::Top;
        for (std::uint32_t& placement : path) {
            step = m_paths.below(step, placement);
            if (step == PathTree::NoStep || m_copies[step] == Nothing)
                return;
            placement = m_copies[step];
        }
    }

    Structure& m_structure;
    PathTree m_paths;                                  ///< to the places with a part or a shape of their own
    std::vector<std::uint32_t> m_copies;               ///< placements by step
    std::vector<const StructureOverride*> m_overrides; ///< by step; null on the way
    std::vector<std::uint32_t> m_open;                 ///< steps whose part is still shared
    std::size_t m_copied = 0;
    bool m_isWhole = true;
};

} // namespace

bool separateOwnShapes(Structure& structure)
{
    return Separation(structure).run();
}

} // namespace importer::plmxml
