#include "ptx/readers/step/annotations/Census.h"

#include "ptx/readers/step/p21/TypeSearch.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ptx::step::annotations
{

namespace
{

using List = Census::Numbers Census::*;

constexpr std::array<List, 13> Lists = {
    &Census::placeholders, &Census::occurrences, &Census::callouts, &Census::planes,     &Census::models,
    &Census::relations,    &Census::links,       &Census::shapes,   &Census::otherStyle, &Census::values,
    &Census::deviations,   &Census::aspects,     &Census::hidings};

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
    if (type == "DIMENSIONAL_CHARACTERISTIC_REPRESENTATION")
        return &Census::values;
    if (type == "PLUS_MINUS_TOLERANCE")
        return &Census::deviations;
    if (type == "SHAPE_ASPECT_RELATIONSHIP")
        return &Census::aspects;
    if (type == "INVISIBILITY")
        return &Census::hidings;
    return nullptr;
}

int classOf(std::string_view type)
{
    const List list = listFor(type);
    return list ? static_cast<int>(std::find(Lists.begin(), Lists.end(), list) - Lists.begin()) : p21::NotWanted;
}

/// Of annotations alone.
int classOfAnnotation(std::string_view type)
{
    const List list = listFor(type);
    return list == &Census::occurrences || list == &Census::placeholders ? 0 : p21::NotWanted;
}

} // namespace

Census takeCensus(const p21::Records& records)
{
    Census census;
    if (!p21::hasType(records, classOfAnnotation))
        return census;
    p21::forEachTyped(records, classOf, [&census](int list, std::uint32_t number) {
        Census::Numbers& numbers = census.*Lists[static_cast<std::size_t>(list)];
        if (numbers.empty() || numbers.back() != number)
            numbers.push_back(number);
    });
    return census;
}

} // namespace ptx::step::annotations
