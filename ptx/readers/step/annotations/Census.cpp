#include "ptx/readers/step/annotations/Census.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ptx::step::annotations
{

namespace
{

using p21::Piece;
using p21::Record;
using p21::Role;
using List = Census::Numbers Census::*;

bool contains(std::string_view text, std::string_view word)
{
    return text.find(word) != std::string_view::npos;
}

/// Kinds of occurrences that do not say so in their names.
constexpr std::array<std::string_view, 6> OtherOccurrences = {"LEADER_CURVE",      "PROJECTION_CURVE",
                                                              "DIMENSION_CURVE",   "TERMINATOR_SYMBOL",
                                                              "LEADER_TERMINATOR", "DIMENSION_CURVE_TERMINATOR"};

bool isOccurrence(std::string_view type)
{
    if (std::find(OtherOccurrences.begin(), OtherOccurrences.end(), type) != OtherOccurrences.end())
        return true;
    return contains(type, "ANNOTATION_") && contains(type, "OCCURRENCE") && !contains(type, "RELATIONSHIP") &&
           !contains(type, "ASSOCIATIVITY");
}

/// The list for entities of `type`, null for others.
List listFor(std::string_view type)
{
    if (type.starts_with("ANNOTATION_PLACEHOLDER_OCCURRENCE"))
        return &Census::placeholders;
    if (isOccurrence(type))
        return &Census::occurrences;
    if (type == "DRAUGHTING_CALLOUT" || type.ends_with("DIRECTED_CALLOUT") || type.ends_with("_DIMENSION_CALLOUT"))
        return &Census::callouts;
    if (type == "ANNOTATION_PLANE")
        return &Census::planes;
    if (type == "DRAUGHTING_MODEL")
        return &Census::models;
    if (type == "MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP")
        return &Census::relations;
    if (type.starts_with("DRAUGHTING_MODEL_ITEM_ASSOCIATION"))
        return &Census::links;
    if (type == "SHAPE_DEFINITION_REPRESENTATION")
        return &Census::shapes;
    if (type.ends_with("OVER_RIDING_STYLED_ITEM"))
        return &Census::otherStyle;
    if (type == "INVISIBILITY")
        return &Census::hidings;
    return nullptr;
}

std::vector<List> listsOf(const Piece& piece)
{
    std::vector<List> lists;
    std::transform(piece.types.begin(), piece.types.end(), std::back_inserter(lists), listFor);
    return lists;
}

bool hasAnnotations(const Piece& piece)
{
    return std::any_of(piece.types.begin(), piece.types.end(), [](std::string_view type) {
        const List list = listFor(type);
        return list == &Census::occurrences || list == &Census::placeholders;
    });
}

void add(const Piece& piece, Census& census)
{
    const std::vector<List> lists = listsOf(piece);
    std::uint32_t owner = 0;
    for (const Record& record : piece.records) {
        if (record.role == Role::Entity)
            owner = record.number;
        const bool isTyped = record.role == Role::Entity || record.role == Role::Member;
        const List list = isTyped ? lists[record.type] : nullptr;
        if (list && ((census.*list).empty() || (census.*list).back() != owner))
            (census.*list).push_back(owner);
    }
}

} // namespace

Census takeCensus(const p21::Records& records)
{
    Census census;
    if (std::none_of(records.pieces.begin(), records.pieces.end(), hasAnnotations))
        return census;
    for (const Piece& piece : records.pieces)
        add(piece, census);
    return census;
}

} // namespace ptx::step::annotations
