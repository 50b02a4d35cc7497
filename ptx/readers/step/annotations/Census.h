#pragma once

#include "ptx/readers/step/p21/Records.h"

#include <cstdint>
#include <vector>

namespace ptx::step::annotations
{

/// The entities that have to do with annotations, by their numbers, each once and in the order of the text.
struct Census {
    using Numbers = std::vector<std::uint32_t>;

    Numbers occurrences;
    Numbers placeholders; ///< of occurrences
    Numbers callouts;
    Numbers planes;     ///< with what is written on them
    Numbers models;     ///< of draughting
    Numbers relations;  ///< between such models
    Numbers links;      ///< from such models to aspects of products
    Numbers shapes;     ///< representations of the shapes of products
    Numbers otherStyle; ///< items that are styled differently than what holds them
    Numbers values;     ///< which representations tell the values of dimensions
    Numbers deviations; ///< which limits dimensions have
    Numbers aspects;    ///< relations between aspects of products
    Numbers hidings;    ///< lists of what was not seen when the text was written

    bool isEmpty() const { return occurrences.empty() && placeholders.empty(); }
};

/// Counts nothing but types when there are no annotations.
Census takeCensus(const p21::Records& records);

} // namespace ptx::step::annotations
