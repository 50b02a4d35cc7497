#include "importer/plmxml/Survey.h"

#include "importer/plmxml/PlaceWalk.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

Visibility visibilityAt(const Structure& structure, const Place& place, Visibility above)
{
    if (place.override && place.override->visibility != Visibility::AsAbove)
        return place.override->visibility;
    const Visibility own = structure.placements[place.placement].visibility;
    return own == Visibility::AsAbove ? above : own;
}

class Counter
{
public:
    Counter(const Structure& structure, FileTable& files, zn::DocumentStructure& facts)
        : m_structure(structure), m_files(files), m_facts(facts)
    {
    }

    bool enter(const Place& place)
    {
        m_above.resize(place.depth);
        m_above.push_back(visibilityAt(m_structure, place, place.depth > 0 ? m_above.back() : Visibility::Shown));
        m_facts.occurrences += 1;
        m_facts.roots += place.depth == 0 ? 1 : 0;
        m_facts.depth = std::max(m_facts.depth, place.depth + 1);
        const std::uint32_t index = m_structure.placements[place.placement].part;
        const StructurePart* const part = index == Nothing ? nullptr : &m_structure.parts[index];
        if (part)
            countPieces(*part);
        if (!part || part->placements.empty())
            countLeaf(part && !part->pieces.empty());
        return true;
    }

private:
    void countPieces(const StructurePart& part)
    {
        m_facts.shapePlaces += part.pieces.empty() ? 0 : 1;
        for (const ShapePiece& piece : part.pieces)
            ++m_files[piece.file].places;
    }

    void countLeaf(bool hasShape)
    {
        m_facts.leaves += 1;
        m_facts.leavesWithoutShape += hasShape ? 0 : 1;
        m_facts.hiddenLeaves += m_above.back() == Visibility::Hidden ? 1 : 0;
    }

    const Structure& m_structure;
    FileTable& m_files;
    zn::DocumentStructure& m_facts;
    std::vector<Visibility> m_above;
};

} // namespace

void surveyPlaces(const Structure& structure, FileTable& files, zn::DocumentStructure& facts)
{
    Counter counter(structure, files, facts);
    const PlaceWalk walk(structure);
    const bool isWhole = walk.run([&counter](const Place& place) { return counter.enter(place); }, [](const Place&) {});
    facts.isCut = facts.isCut || !isWhole;
}

} // namespace importer::plmxml
