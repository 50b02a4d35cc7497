#include "importer/plmxml/Survey.h"

#include "importer/plmxml/HiddenLeaves.h"
#include "importer/plmxml/PartOrder.h"
#include "importer/plmxml/PlaceWalk.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

class Counter
{
public:
    Counter(const Structure& structure, FileTable& files, zn::DocumentStructure& facts, std::size_t allowed)
        : m_structure(structure), m_files(files), m_facts(facts), m_allowed(allowed), m_parts(structure.parts.size())
    {
    }

    void count(const PartOrder& order)
    {
        for (const std::vector<std::uint32_t>& roots : m_structure.graphs)
            countPlacements(roots, {1, 0});
        for (const std::uint32_t part : order.parts()) {
            countPieces(m_structure.parts[part], m_parts[part].places);
            countPlacements(m_structure.parts[part].placements, m_parts[part]);
        }
        m_facts.hiddenLeaves = countHiddenLeaves(m_structure, order);
    }

    std::optional<StructureFault> fault() const
    {
        using Why = Refusal::Why;
        if (m_tooDeep != Nothing)
            return StructureFault{Why::TooDeep, m_tooDeep};
        if (m_facts.occurrences > m_allowed)
            return StructureFault{Why::TooLarge, m_most, m_mostPlaces, m_allowed};
        return std::nullopt;
    }

private:
    /// Of one part, or of the top.
    struct Count {
        double places = 0;
        std::size_t depth = 0; ///< levels down to it
    };

    void countPlacements(const std::vector<std::uint32_t>& placements, const Count& around)
    {
        const std::size_t depth = around.depth + 1;
        for (const std::uint32_t placement : placements) {
            m_facts.occurrences += around.places;
            m_facts.depth = std::max(m_facts.depth, depth);
            if (depth > PlaceWalk::MaxDepth && m_tooDeep == Nothing)
                m_tooDeep = placement;
            const std::uint32_t part = m_structure.placements[placement].part;
            if (part == Nothing || m_structure.parts[part].placements.empty())
                countLeaf(part != Nothing && !m_structure.parts[part].pieces.empty(), around.places);
            if (part == Nothing)
                continue;
            Count& below = m_parts[part];
            below.places += around.places;
            below.depth = std::max(below.depth, depth);
            if (below.places > m_mostPlaces) {
                m_mostPlaces = below.places;
                m_most = placement;
            }
        }
    }

    void countLeaf(bool hasShape, double places)
    {
        m_facts.leaves += places;
        m_facts.leavesWithoutShape += hasShape ? 0 : places;
    }

    void countPieces(const StructurePart& part, double places)
    {
        m_facts.shapePlaces += part.pieces.empty() ? 0 : places;
        for (const ShapePiece& piece : part.pieces)
            m_files[piece.file].places += places;
    }

    const Structure& m_structure;
    FileTable& m_files;
    zn::DocumentStructure& m_facts;
    std::size_t m_allowed; ///< places
    std::vector<Count> m_parts;
    std::uint32_t m_tooDeep = Nothing;
    std::uint32_t m_most = Nothing; ///< a placement of the part with the most places
    double m_mostPlaces = 0;
};

} // namespace

std::optional<StructureFault> surveyPlaces(const Structure& structure, FileTable& files, zn::DocumentStructure& facts,
                                           std::size_t mostPlaces)
{
    for (const std::vector<std::uint32_t>& roots : structure.graphs)
        facts.roots += roots.size();
    const PartOrder order(structure);
    std::optional<StructureFault> fault;
    if (order.ring() != Nothing) {
        fault = StructureFault{Refusal::Why::Ring, order.ring()};
    } else {
        Counter counter(structure, files, facts, mostPlaces);
        counter.count(order);
        fault = counter.fault();
    }
    facts.isCut = facts.isCut || fault;
    return fault;
}

} // namespace importer::plmxml
