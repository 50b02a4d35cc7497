#include "importer/plmxml/DocumentReport.h"

#include "importer/plmxml/ReportBytes.h"

#include <algorithm>

// What goes over is told once for both directions. Each function names every member of its class, so that a new one
// cannot be forgotten.
namespace zn
{

template <class Bytes, class T>
using Told = std::conditional_t<Bytes::isReading, T, const T>;

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, StructureFile>& file)
{
    auto& [written, path, format, found, foundBy, places, whyNot, line] = file;
    bytes(written, path, format, found, foundBy, places, whyNot, line);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, PassedOccurrence>& occurrence)
{
    auto& [id, path, line] = occurrence;
    bytes(id, path, line);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, LeftOutShape>& shape)
{
    auto& [element, id, part, written, format, whyNot, line] = shape;
    bytes(element, id, part, written, format, whyNot, line);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, DocumentStructure>& facts)
{
    auto& [isNormalised, treeFrom, view, otherViews, roots, occurrences, leaves, hiddenLeaves, leavesWithoutShape,
           shapePlaces, parts, depth, instances, userValues, materials, duplicateIds, conditions, internalShapes,
           isSelection, placedTwice, badTransforms, badMaterialNumbers, languages, hasNoUnits, isCut, danglingCount,
           dangling, unplacedCount, unplaced, repeatedCount, repeated, files, leftOutCounts, leftOut] = facts;
    bytes(isNormalised, treeFrom, view, otherViews, roots, occurrences, leaves, hiddenLeaves, leavesWithoutShape,
          shapePlaces, parts, depth, instances, userValues, materials, duplicateIds, conditions, internalShapes,
          isSelection, placedTwice, badTransforms, badMaterialNumbers, languages, hasNoUnits, isCut, danglingCount,
          dangling, unplacedCount, unplaced, repeatedCount, repeated, files, leftOutCounts, leftOut);
}

} // namespace zn

namespace importer
{

template <class Bytes>
void members(Bytes& bytes, zn::Told<Bytes, DanglingReference>& reference)
{
    auto& [element, id, attribute, target, line] = reference;
    bytes(element, id, attribute, target, line);
}

} // namespace importer

namespace importer::plmxml
{

using zn::Told;

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, AskedFile>& asked)
{
    auto& [written, line, isRefused] = asked;
    bytes(written, line, isRefused);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, DocumentElement>& element)
{
    auto& [document, id] = element;
    bytes(document, id);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, Refusal>& refusal)
{
    auto& [why, element, id, line, allowed, places] = refusal;
    bytes(why, element, id, line, allowed, places);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, StructurePart>& part)
{
    auto& [id, view, name, placements, pieces, tags, shapeNodes] = part;
    bytes(name, placements, tags, shapeNodes);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, StructurePlacement>& placement)
{
    auto& [id, element, name, part, placed, material, visibility, hasNode, tags] = placement;
    bytes(name, part, material, visibility, hasNode, tags);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, StructureOverride>& each)
{
    auto& [path, element, part, name, isMoved, placed, material, visibility, pieces, tags] = each;
    bytes(path, name, isMoved, material, visibility, tags);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, Structure>& structure)
{
    auto& [parts, placements, graphs, overrides, materials, materialTags] = structure;
    bytes(parts, placements, graphs, overrides, materialTags);
}

template <class Bytes>
void members(Bytes& bytes, Told<Bytes, NormalisedDocument>& document)
{
    auto& [way, refusal, text, elements, isRead, hasAllFacts, facts, structure, asked] = document;
    bytes(way, refusal, isRead);
    if (isRead)
        bytes(elements, hasAllFacts, facts, structure, asked);
}

namespace
{

constexpr std::uint32_t Mark = 0x7a6e6431; // tells a report of this layout

/// Whether no index leads out of its list.
bool isInside(const Structure& structure)
{
    const auto isAt = [](std::uint32_t index, std::size_t count) { return index < count; };
    const auto allPlaced = [&](const std::vector<std::uint32_t>& placements) {
        return std::all_of(placements.begin(), placements.end(),
                           [&](std::uint32_t index) { return isAt(index, structure.placements.size()); });
    };
    const auto isMaterial = [&](std::uint32_t index) {
        return index == Nothing || isAt(index, structure.materialTags.size());
    };
    return std::all_of(structure.parts.begin(), structure.parts.end(),
                       [&](const StructurePart& part) { return allPlaced(part.placements); }) &&
           std::all_of(structure.placements.begin(), structure.placements.end(),
                       [&](const StructurePlacement& placement) {
                           return isMaterial(placement.material) &&
                                  (placement.part == Nothing || isAt(placement.part, structure.parts.size()));
                       }) &&
           std::all_of(structure.graphs.begin(), structure.graphs.end(), allPlaced) &&
           std::all_of(structure.overrides.begin(), structure.overrides.end(), [&](const StructureOverride& each) {
               return isMaterial(each.material) && allPlaced(each.path);
           });
}

/// Whether the first of what was counted are there.
template <class T>
bool isKept(const std::vector<T>& kept, std::size_t count)
{
    return kept.size() == std::min(count, T::maxKept);
}

bool fits(const NormalisedDocument& document)
{
    const zn::DocumentStructure& facts = document.facts;
    return (document.isRead || document.way != NormalisedDocument::Way::AsText) &&
           isKept(facts.dangling, facts.danglingCount) && isKept(facts.unplaced, facts.unplacedCount) &&
           isKept(facts.repeated, facts.repeatedCount) && facts.leftOut.size() <= zn::LeftOutShape::maxKept &&
           isInside(document.structure);
}

} // namespace

std::string reportOf(const NormalisedDocument& document)
{
    ReportWriter bytes;
    bytes(Mark, document);
    return bytes.bytes();
}

std::optional<NormalisedDocument> documentOf(std::string_view bytes, std::uint64_t memory)
{
    ReportReader reader(bytes, memory);
    std::uint32_t mark = 0;
    reader(mark);
    if (mark != Mark)
        return std::nullopt;
    NormalisedDocument document;
    reader(document);
    if (!reader.isSound() || !reader.isAtEnd() || !fits(document))
        return std::nullopt;
    return document;
}

} // namespace importer::plmxml
