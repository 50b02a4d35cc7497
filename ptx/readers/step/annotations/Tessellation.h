#pragma once

#include "ptx/readers/step/annotations/Pen.h"
#include "ptx/readers/step/facets/CoordinateLists.h"
#include "ptx/readers/step/facets/FaceMaker.h"

namespace ptx::step::annotations
{

/// Draws tessellated items: curves and surfaces that refer to lists of points by number, and sets of them.
class Tessellation
{
public:
    /// Both outlive this object.
    Tessellation(const p21::Entities& entities, Pen& pen);

    /// Whether `number` is a set of tessellated items.
    bool isSet(std::uint32_t number) const;
    /// Draws the set `number` and the sets in it. The pen counts what it cannot.
    void drawSet(std::uint32_t number) { drawSet(number, {}); }

private:
    using Places = facets::Places; ///< of the sets around

    void drawSet(std::uint32_t number, Places places);
    void drawItem(std::uint32_t number, const Places& places);
    void drawCurves(const p21::Fields& set, const Places& places);
    void drawSurface(const facets::Surface& surface, const Places& places);

    const p21::Entities& m_entities;
    Pen& m_pen;
    facets::CoordinateLists m_points;
};

} // namespace ptx::step::annotations
