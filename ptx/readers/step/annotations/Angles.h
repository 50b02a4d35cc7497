#pragma once

#include "ptx/readers/step/p21/Entities.h"

#include <optional>
#include <unordered_map>

namespace ptx::step::annotations
{

/// The units of plane angles that contexts assign.
class Angles
{
public:
    /// `entities` outlives this object.
    explicit Angles(const p21::Entities& entities) : m_entities(entities) {}

    /// How many radians the unit of the context `number` is; nothing where it assigns none that can be read.
    std::optional<double> radiansIn(std::uint32_t context);

private:
    std::optional<double> find(std::uint32_t context) const;
    std::optional<double> radiansOf(std::uint32_t unit, int depth) const;

    const p21::Entities& m_entities;
    std::unordered_map<std::uint32_t, std::optional<double>> m_known; ///< by context
};

} // namespace ptx::step::annotations
