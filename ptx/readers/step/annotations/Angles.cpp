#include "ptx/readers/step/annotations/Angles.h"

namespace ptx::step::annotations
{

std::optional<double> Angles::radiansIn(std::uint32_t context)
{
    const auto [entry, isNew] = m_known.try_emplace(context);
    if (isNew)
        entry->second = find(context);
    return entry->second;
}

std::optional<double> Angles::find(std::uint32_t context) const
{
    const p21::Fields units = m_entities.own(context, "GLOBAL_UNIT_ASSIGNED_CONTEXT", 2).list(0);
    for (std::size_t i = 0; i < units.size(); ++i)
        if (m_entities.isA(units.reference(i), "PLANE_ANGLE_UNIT"))
            return radiansOf(units.reference(i), 0);
    return std::nullopt;
}

/// A unit may be so many of another one, a degree so many radians.
std::optional<double> Angles::radiansOf(std::uint32_t unit, int depth) const
{
    constexpr int Deepest = 4;
    if (!m_entities.isA(unit, "CONVERSION_BASED_UNIT")) {
        const p21::Fields si = m_entities.own(unit, "SI_UNIT", 1);
        const bool isRadian = si.enumeration(1) == ".RADIAN." && si.enumeration(0).empty();
        return isRadian ? std::optional(1.) : std::nullopt;
    }
    const p21::Fields conversion = m_entities.own(unit, "CONVERSION_BASED_UNIT", 1);
    const p21::Fields measure = m_entities.own(conversion.reference(1), "MEASURE_WITH_UNIT", 0);
    const std::optional<double> factor = measure.list(0).real(0);
    if (!factor || !(*factor > 0) || depth > Deepest)
        return std::nullopt;
    const std::optional<double> other = radiansOf(measure.reference(1), depth + 1);
    return other ? std::optional(*factor * *other) : std::nullopt;
}

} // namespace ptx::step::annotations
