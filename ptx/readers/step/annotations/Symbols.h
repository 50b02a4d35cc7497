#pragma once

#include "ptx/readers/step/annotations/Pen.h"
#include "ptx/readers/step/p21/Entities.h"

namespace ptx::step::annotations
{

/// Draws what a text names rather than draws: the arrow heads of leaders. Letters need the font that is named with
/// them; their text is kept with the callout.
class Symbols
{
public:
    /// Both outlive this object.
    Symbols(const p21::Entities& entities, Pen& pen) : m_entities(entities), m_pen(pen) {}

    /// Draws or keeps `item`, the content of the annotation `occurrence`. @return false when it is no symbol or text
    bool draw(std::uint32_t occurrence, std::uint32_t item);

private:
    void drawSymbol(std::uint32_t occurrence, const p21::Fields& symbol);
    void addTexts(std::uint32_t item);
    std::optional<Point> neighbourOnLeader(std::uint32_t occurrence, const Point& tip) const;

    const p21::Entities& m_entities;
    Pen& m_pen;
};

} // namespace ptx::step::annotations
