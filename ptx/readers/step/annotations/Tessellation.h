#pragma once

#include "ptx/readers/step/annotations/Axes.h"
#include "ptx/readers/step/annotations/Pen.h"

namespace ptx::step::annotations
{

/// Draws tessellated items: curves and surfaces that refer to lists of points by number, and sets of them.
class Tessellation
{
public:
    /// Both outlive this object.
    Tessellation(const Entities& entities, Pen& pen) : m_entities(entities), m_pen(pen) {}

    /// Whether `number` is a set of tessellated items.
    bool isSet(std::uint32_t number) const;
    /// Draws the set `number` and the sets in it. The pen counts what it cannot.
    void drawSet(std::uint32_t number) { drawSet(number, {}); }

private:
    using Points = std::vector<Point>;
    /// The places of the sets around, the outermost first.
    using Places = std::vector<Axes>;

    void drawSet(std::uint32_t number, Places places);
    void drawItem(std::uint32_t number, const Places& places);
    void drawCurves(const Fields& set, const Places& places);
    void drawSurface(const Fields& surface, bool isFace, const Places& places);
    const Points& pointsOf(std::uint32_t list);

    const Entities& m_entities;
    Pen& m_pen;
    std::unordered_map<std::uint32_t, Points> m_points; ///< by the number of their list
};

} // namespace ptx::step::annotations
