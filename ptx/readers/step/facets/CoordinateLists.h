#pragma once

#include "ptx/readers/step/facets/Point.h"
#include "ptx/readers/step/p21/Entities.h"

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

namespace ptx::step::facets
{

/// Lists of points, which many surfaces and curves refer to: each is read once.
class CoordinateLists
{
public:
    /// Asked before each list for the work of so many points; false leaves the list empty.
    using Take = std::function<bool(std::size_t)>;

    /// `entities` outlives this object.
    CoordinateLists(const p21::Entities& entities, Take take) : m_entities(entities), m_take(std::move(take)) {}

    /// The points of list `number`, empty when it is none. Valid as long as this object.
    const std::vector<Point>& of(std::uint32_t number);

private:
    const p21::Entities& m_entities;
    Take m_take;
    std::unordered_map<std::uint32_t, std::vector<Point>> m_points;
};

} // namespace ptx::step::facets
