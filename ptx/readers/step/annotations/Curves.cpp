#include "ptx/readers/step/annotations/Curves.h"

#include "ptx/readers/step/annotations/Outlines.h"
#include "ptx/readers/step/annotations/Splines.h"
#include "ptx/readers/step/facets/Axes.h"
#include "scene/Polygons.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ptx::step::annotations
{

namespace
{

constexpr double FullTurn = 2 * std::numbers::pi;
constexpr int StepsOfTurn = 48;
constexpr int Deepest = 16;

/// An ellipse, or a circle when both radii are the same.
struct Ellipse {
    facets::Axes axes;
    double a = 0, b = 0;

    Point at(double angle) const { return axes.placed({a * std::cos(angle), b * std::sin(angle), 0}); }
    double angleOf(const Point& point) const
    {
        const Point own = axes.within(point);
        return std::atan2(own[1] / b, own[0] / a);
    }
};

std::optional<Ellipse> ellipseOf(const p21::Entities& entities, const p21::Fields& curve)
{
    const bool isCircle = curve.type() == "CIRCLE";
    if (!isCircle && curve.type() != "ELLIPSE")
        return std::nullopt;
    const auto a = curve.real(2);
    const auto b = curve.real(isCircle ? 2 : 3);
    if (!a || !b || !(*a > 0) || !(*b > 0) || curve.reference(1) == 0)
        return std::nullopt;
    return Ellipse{facets::axesOf(entities, curve.reference(1)), *a, *b};
}

std::vector<Point> arc(const Ellipse& ellipse, double from, double turn)
{
    constexpr double Rounding = 1e-6;
    const double exact = std::abs(turn) / FullTurn * StepsOfTurn;
    const int steps = std::max(1, static_cast<int>(std::ceil(exact - Rounding)));
    std::vector<Point> points;
    for (int i = 0; i <= steps; ++i)
        points.push_back(ellipse.at(from + turn * i / steps));
    return points;
}

/// The first point among the ways in which an end is told.
std::optional<Point> pointIn(const p21::Entities& entities, const p21::Fields& trims)
{
    for (std::size_t i = 0; i < trims.size(); ++i)
        if (const std::optional<Point> point = facets::tripleOf(entities, trims.reference(i)))
            return point;
    return std::nullopt;
}

std::optional<double> parameterIn(const p21::Fields& trims)
{
    for (std::size_t i = 0; i < trims.size(); ++i)
        if (const std::optional<double> parameter = trims.list(i).real(0))
            return parameter;
    return std::nullopt;
}

/// Where a part of an ellipse ends: one of both.
struct End {
    std::optional<double> angle;     ///< radians
    std::optional<double> parameter; ///< in the unit of angles

    std::optional<double> in(double unit) const { return parameter ? std::optional(*parameter * unit) : angle; }
};

End endOf(const p21::Entities& entities, const p21::Fields& trims, const Ellipse& ellipse)
{
    if (const std::optional<Point> point = pointIn(entities, trims))
        return {ellipse.angleOf(*point), std::nullopt};
    return {std::nullopt, parameterIn(trims)};
}

/// Whether it can be no end in radians, for parameters are within one turn.
bool isInDegrees(const End& end)
{
    return end.parameter && std::abs(*end.parameter) > FullTurn + 1e-3;
}

} // namespace

bool Curves::draw(std::uint32_t number, const osg::Color4f& color)
{
    const std::optional<std::vector<Point>> points = pointsOf(number, 0);
    if (!points) {
        m_pen.countUnread(m_entities.at(number).type());
        return false;
    }
    const std::string_view type = m_entities.at(number).type();
    if (type == "CIRCLE")
        m_pen.countCircle();
    m_pen.polyline(*points, color);
    return true;
}

bool Curves::fill(const p21::Fields& bounds)
{
    std::vector<Outline> outlines;
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        std::optional<std::vector<Point>> points = pointsOf(bounds.reference(i), 0);
        if (!points) {
            m_pen.countUnread(m_entities.at(bounds.reference(i)).type());
            return false;
        }
        if (points->size() > 1 && points->front() == points->back())
            points->pop_back();
        if (points->size() > 2)
            outlines.push_back(std::move(*points));
    }
    const std::optional<Outline> area = withHoles(std::move(outlines), m_pen);
    if (!area)
        return true;
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> corners;
    for (const Point& point : *area) {
        corners.push_back(static_cast<std::uint32_t>(positions.size()));
        positions.push_back({static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])});
    }
    std::vector<std::uint32_t> triangles;
    osg::appendPolygon(positions, corners, triangles);
    m_pen.triangles(*area, triangles);
    return true;
}

std::optional<std::vector<Point>> Curves::pointsOf(std::uint32_t number, int depth)
{
    const p21::Fields curve = m_entities.at(number);
    if (depth > Deepest || !m_pen.take(1))
        return std::nullopt;
    if (curve.type() == "POLYLINE")
        return polyline(curve);
    if (curve.type() == "TRIMMED_CURVE")
        return trimmed(curve);
    if (curve.type() == "COMPOSITE_CURVE")
        return composed(curve, depth);
    if (isSpline(m_entities, number))
        return splinePoints(m_entities, number, m_pen);
    if (const std::optional<Ellipse> ellipse = ellipseOf(m_entities, curve))
        return arc(*ellipse, 0, FullTurn);
    return std::nullopt;
}

std::optional<std::vector<Point>> Curves::polyline(const p21::Fields& curve) const
{
    const p21::Fields list = curve.list(1);
    if (!m_pen.take(list.size()))
        return std::nullopt;
    std::vector<Point> points;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::optional<Point> point = facets::tripleOf(m_entities, list.reference(i));
        if (point)
            points.push_back(*point);
        else
            m_pen.countOutOfRange();
    }
    return points;
}

/// The point among the ways in which an end is told, or that of a parameter along a line.
std::optional<Point> Curves::trim(const p21::Fields& trims, const p21::Fields& basis) const
{
    if (const std::optional<Point> point = pointIn(m_entities, trims))
        return point;
    const std::optional<double> parameter = parameterIn(trims);
    const p21::Fields vector = m_entities.at(basis.reference(2));
    const std::optional<Point> start = facets::tripleOf(m_entities, basis.reference(1));
    std::optional<Point> way = facets::tripleOf(m_entities, vector.reference(1));
    const std::optional<double> length = vector.real(2);
    if (!parameter || !start || !way || !length)
        return std::nullopt;
    const double unit = std::hypot((*way)[0], (*way)[1], (*way)[2]);
    if (!(unit > 0))
        return std::nullopt;
    for (int k = 0; k < 3; ++k)
        (*way)[k] = (*start)[k] + (*way)[k] / unit * *length * *parameter;
    return way;
}

std::optional<std::vector<Point>> Curves::trimmed(const p21::Fields& curve)
{
    const p21::Fields basis = m_entities.at(curve.reference(1));
    if (basis.type() != "LINE")
        return trimmedEllipse(curve, basis);
    const std::optional<Point> from = trim(curve.list(2), basis);
    const std::optional<Point> to = trim(curve.list(3), basis);
    return from && to ? std::optional(std::vector<Point>{*from, *to}) : std::nullopt;
}

std::optional<std::vector<Point>> Curves::trimmedEllipse(const p21::Fields& curve, const p21::Fields& basis) const
{
    constexpr double NoTurn = 1e-9;
    const std::optional<Ellipse> ellipse = ellipseOf(m_entities, basis);
    if (!ellipse)
        return std::nullopt;
    const End ends[] = {endOf(m_entities, curve.list(2), *ellipse), endOf(m_entities, curve.list(3), *ellipse)};
    double unit = m_radians.value_or(1);
    if (!m_radians && (ends[0].parameter || ends[1].parameter)) {
        unit = isInDegrees(ends[0]) || isInDegrees(ends[1]) ? std::numbers::pi / 180 : 1;
        m_pen.countGuessedAngles();
    }
    const std::optional<double> from = ends[0].in(unit);
    const std::optional<double> to = ends[1].in(unit);
    if (!from || !to)
        return std::nullopt;
    const double sense = curve.flag(4) ? 1 : -1;
    double turn = std::fmod(sense * (*to - *from), FullTurn);
    if (turn <= NoTurn)
        turn += FullTurn;
    return arc(*ellipse, *from, sense * turn);
}

std::optional<std::vector<Point>> Curves::composed(const p21::Fields& curve, int depth)
{
    std::vector<Point> all;
    const p21::Fields segments = curve.list(1);
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const p21::Fields segment = m_entities.at(segments.reference(i));
        std::optional<std::vector<Point>> points = pointsOf(segment.reference(2), depth + 1);
        if (!points)
            return std::nullopt;
        if (!segment.flag(1))
            std::reverse(points->begin(), points->end());
        if (!all.empty() && !points->empty())
            all.pop_back(); // the segment before ends where this one begins
        all.insert(all.end(), points->begin(), points->end());
        if (!m_pen.take(points->size()))
            return std::nullopt;
    }
    return all;
}

} // namespace ptx::step::annotations
