#include "ptx/readers/step/annotations/Symbols.h"

#include "ptx/readers/step/facets/Axes.h"
#include "ptx/readers/step/p21/StepString.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ptx::step::annotations
{

namespace
{

/// The text of a literal: behind its name, or first in the member of a complex one.
std::string_view literalOf(const p21::Entities& entities, std::uint32_t number)
{
    return entities.own(number, "TEXT_LITERAL", 1).text(0);
}

bool isLiteral(const p21::Entities& entities, std::uint32_t number)
{
    return entities.at(number).type().starts_with("TEXT_LITERAL") || entities.isA(number, "TEXT_LITERAL");
}

bool isComposite(const p21::Entities& entities, std::uint32_t number)
{
    return entities.at(number).type().starts_with("COMPOSITE_TEXT") || entities.isA(number, "COMPOSITE_TEXT");
}

double squaredDistance(const Point& a, const Point& b)
{
    return std::pow(a[0] - b[0], 2) + std::pow(a[1] - b[1], 2) + std::pow(a[2] - b[2], 2);
}

/// In the plane of the axes, with its tip in the origin: three times as long as wide.
std::array<Point, 3> arrow(const facets::Axes& axes, double angle, double length)
{
    const double along[] = {std::cos(angle) * length, std::sin(angle) * length};
    return {axes.placed({}), axes.placed({along[0] - along[1] / 6, along[1] + along[0] / 6, 0}),
            axes.placed({along[0] + along[1] / 6, along[1] - along[0] / 6, 0})};
}

} // namespace

bool Symbols::draw(std::uint32_t occurrence, std::uint32_t item)
{
    const p21::Fields fields = m_entities.at(item);
    if (isLiteral(m_entities, item) || isComposite(m_entities, item))
        addTexts(item);
    else if (fields.type() == "DEFINED_SYMBOL")
        drawSymbol(occurrence, fields);
    else
        return false;
    return true;
}

void Symbols::drawSymbol(std::uint32_t occurrence, const p21::Fields& symbol)
{
    const std::string_view name = m_entities.at(symbol.reference(1)).text(0);
    const p21::Fields target = m_entities.at(symbol.reference(2));
    const double length = std::max(target.real(2).value_or(0), target.real(3).value_or(0));
    if ((name != "'filled arrow'" && name != "'unfilled arrow'") || !(length > 0))
        return m_pen.countUnread("DEFINED_SYMBOL");
    const facets::Axes axes = facets::axesOf(m_entities, target.reference(1));
    // Some systems let the X axis point along the leader, others against it.
    double angle = std::acos(-1.);
    if (const std::optional<Point> neighbour = neighbourOnLeader(occurrence, axes.origin)) {
        const Point way = axes.within(*neighbour);
        angle = std::atan2(way[1], way[0]);
    }
    const std::array<Point, 3> corners = arrow(axes, angle, length);
    if (name == "'filled arrow'")
        return m_pen.triangles(corners, std::array<std::uint32_t, 3>{0, 1, 2});
    m_pen.polyline(std::array{corners[1], corners[0], corners[2]}, m_pen.style().line);
}

/// The point of the leader that `occurrence` ends, beside the end at `tip`.
std::optional<Point> Symbols::neighbourOnLeader(std::uint32_t occurrence, const Point& tip) const
{
    const p21::Fields terminator = m_entities.own(occurrence, "TERMINATOR_SYMBOL", 3);
    const p21::Fields curve = m_entities.own(terminator.reference(0), "STYLED_ITEM", 1);
    const p21::Fields points = m_entities.at(curve.reference(1)).list(1);
    const std::size_t last = points.size() - 1;
    if (points.size() < 2)
        return std::nullopt;
    const std::optional<Point> begin = facets::tripleOf(m_entities, points.reference(0));
    const std::optional<Point> end = facets::tripleOf(m_entities, points.reference(last));
    if (!begin || !end)
        return std::nullopt;
    const bool isAtBegin = squaredDistance(*begin, tip) < squaredDistance(*end, tip);
    return facets::tripleOf(m_entities, points.reference(isAtBegin ? 1 : last - 1));
}

void Symbols::addTexts(std::uint32_t item)
{
    std::vector<std::string>& texts = m_pen.callout().texts;
    if (isLiteral(m_entities, item)) {
        if (m_pen.take(1))
            texts.push_back(p21::decodedString(literalOf(m_entities, item)));
        return;
    }
    const p21::Fields parts = m_entities.own(item, "COMPOSITE_TEXT", 1).list(0);
    for (std::size_t i = 0; i < parts.size() && m_pen.take(1); ++i) {
        if (isLiteral(m_entities, parts.reference(i)))
            texts.push_back(p21::decodedString(literalOf(m_entities, parts.reference(i))));
        else
            m_pen.countUnread(m_entities.at(parts.reference(i)).type());
    }
}

} // namespace ptx::step::annotations
