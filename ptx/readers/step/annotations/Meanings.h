#pragma once

#include "ptx/readers/step/annotations/Census.h"
#include "ptx/readers/step/annotations/Drawing.h"
#include "ptx/readers/step/p21/Entities.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace ptx::step::annotations
{

/// What annotations mean: the dimensions, tolerances and datums that a text says they draw.
class Meanings
{
public:
    /// `entities` outlives this object. Definitions that are nothing of the kind are counted in `unread`, by type.
    Meanings(const p21::Entities& entities, const Census& census, std::map<std::string, std::size_t>& unread);

    /// What the callout or occurrence `number` draws.
    std::vector<Meaning> of(std::uint32_t number) const;

private:
    using Numbers = std::unordered_map<std::uint32_t, std::uint32_t>;

    std::optional<Meaning> meaningOf(std::uint32_t definition) const;
    std::optional<Meaning> dimension(std::uint32_t definition) const;
    std::optional<Meaning> tolerance(std::uint32_t definition) const;
    std::optional<Meaning> datumFeature(std::uint32_t definition) const;
    Measure measureOf(std::uint32_t number) const;
    std::string unitOf(std::uint32_t number) const;
    std::string letters(std::uint32_t number, int depth) const;

    const p21::Entities& m_entities;
    Numbers m_values;                                                            ///< representations of dimensions
    Numbers m_deviations;                                                        ///< tolerance values of dimensions
    Numbers m_datums;                                                            ///< of their features
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> m_definitions; ///< by what draws them
};

} // namespace ptx::step::annotations
