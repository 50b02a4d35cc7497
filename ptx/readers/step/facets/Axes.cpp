#include "ptx/readers/step/facets/Axes.h"

#include <cmath>

namespace ptx::step::facets
{

namespace
{

double dot(const Point& a, const Point& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Point cross(const Point& a, const Point& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Of length 1; nothing for what has no direction.
std::optional<Point> unit(const Point& vector)
{
    const double length = std::hypot(vector[0], vector[1], vector[2]);
    constexpr double Shortest = 1e-9;
    if (!std::isfinite(length) || length < Shortest)
        return std::nullopt;
    return Point{vector[0] / length, vector[1] / length, vector[2] / length};
}

/// The part of `vector` at a right angle to `axis`, of length 1.
std::optional<Point> across(const Point& vector, const Point& axis)
{
    const double along = dot(vector, axis);
    return unit({vector[0] - along * axis[0], vector[1] - along * axis[1], vector[2] - along * axis[2]});
}

Point directionOf(const p21::Entities& entities, std::uint32_t number, const Point& otherwise)
{
    const std::optional<Point> written = tripleOf(entities, number);
    return written ? unit(*written).value_or(otherwise) : otherwise;
}

} // namespace

std::optional<Point> tripleOf(const p21::Entities& entities, std::uint32_t number)
{
    const p21::Fields numbers = number != 0 ? entities.at(number).list(1) : p21::Fields();
    const auto x = numbers.real(0);
    const auto y = numbers.real(1);
    const auto z = numbers.real(2);
    if (!x || !y || !z)
        return std::nullopt;
    return Point{*x, *y, *z};
}

Point Axes::placed(const Point& point) const
{
    const Point way = turned(point);
    return {origin[0] + way[0], origin[1] + way[1], origin[2] + way[2]};
}

Point Axes::turned(const Point& direction) const
{
    Point result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = direction[0] * x[i] + direction[1] * y[i] + direction[2] * z[i];
    return result;
}

Point Axes::within(const Point& point) const
{
    const Point way = {point[0] - origin[0], point[1] - origin[1], point[2] - origin[2]};
    return {dot(way, x), dot(way, y), dot(way, z)};
}

Axes axesOf(const p21::Entities& entities, std::uint32_t number)
{
    const p21::Fields written = entities.at(number);
    Axes axes;
    axes.origin = tripleOf(entities, written.reference(1)).value_or(Point{});
    axes.z = directionOf(entities, written.reference(2), {0, 0, 1});
    const Point wanted = directionOf(entities, written.reference(3), {1, 0, 0});
    std::optional<Point> x = across(wanted, axes.z);
    if (!x)
        x = across({1, 0, 0}, axes.z);
    axes.x = x ? *x : across({0, 1, 0}, axes.z).value_or(Point{0, 1, 0});
    axes.y = cross(axes.z, axes.x);
    return axes;
}

} // namespace ptx::step::facets
