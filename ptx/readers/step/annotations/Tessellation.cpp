#include "ptx/readers/step/annotations/Tessellation.h"

#include <algorithm>
#include <iterator>

namespace ptx::step::annotations
{

namespace
{

constexpr std::size_t DeepestPlace = 16;

Point placed(Point point, const std::vector<Axes>& places)
{
    for (auto axes = places.rbegin(); axes != places.rend(); ++axes)
        point = axes->placed(point);
    return point;
}

/// The triangles of one surface with the points that they use alone: a list of points may serve many surfaces.
class SurfaceCorners
{
public:
    SurfaceCorners(const std::vector<Point>& points, const Fields& index, const std::vector<Axes>& places, Pen& pen)
        : m_points(points), m_index(index), m_places(places), m_pen(pen)
    {
    }

    void addTriangles(const Fields& triangles)
    {
        for (std::size_t i = 0; i < triangles.size(); ++i)
            if (const Fields three = triangles.list(i))
                add(three.index(0), three.index(1), three.index(2));
    }

    void addStrips(const Fields& strips)
    {
        for (std::size_t i = 0; i < strips.size(); ++i) {
            const Fields strip = strips.list(i);
            for (std::size_t k = 0; k + 2 < strip.size(); ++k)
                add(strip.index(k + k % 2), strip.index(k + 1 - k % 2), strip.index(k + 2));
        }
    }

    void addFans(const Fields& fans)
    {
        for (std::size_t i = 0; i < fans.size(); ++i) {
            const Fields fan = fans.list(i);
            for (std::size_t k = 1; k + 1 < fan.size(); ++k)
                add(fan.index(0), fan.index(k), fan.index(k + 1));
        }
    }

    void draw() { m_pen.triangles(m_used, m_corners); }

private:
    void add(std::size_t a, std::size_t b, std::size_t c)
    {
        if (!m_pen.take(1))
            return;
        if (a == b || b == c || c == a)
            return m_pen.countJoint();
        const std::size_t three[] = {pointOf(a), pointOf(b), pointOf(c)};
        for (const std::size_t point : three)
            if (point == 0 || point > m_points.size())
                return m_pen.countOutOfRange();
        for (const std::size_t point : three) {
            const auto [entry, isNew] = m_numbers.try_emplace(point, static_cast<std::uint32_t>(m_used.size()));
            if (isNew)
                m_used.push_back(placed(m_points[point - 1], m_places));
            m_corners.push_back(entry->second);
        }
    }

    std::size_t pointOf(std::size_t number) const
    {
        if (!m_index || m_index.size() == 0 || number == 0)
            return number;
        return m_index.index(number - 1);
    }

    const std::vector<Point>& m_points;
    Fields m_index;
    const std::vector<Axes>& m_places;
    Pen& m_pen;
    std::unordered_map<std::size_t, std::uint32_t> m_numbers; ///< of used points, by their numbers in the list
    std::vector<Point> m_used;
    std::vector<std::uint32_t> m_corners;
};

} // namespace

bool Tessellation::isSet(std::uint32_t number) const
{
    return m_entities.isA(number, "TESSELLATED_GEOMETRIC_SET");
}

void Tessellation::drawSet(std::uint32_t number, Places places)
{
    if (places.size() > DeepestPlace)
        return m_pen.countUnread("TESSELLATED_GEOMETRIC_SET");
    const bool isMoved = m_entities.isA(number, "REPOSITIONED_TESSELLATED_ITEM");
    places.push_back(
        isMoved ? axesOf(m_entities, m_entities.own(number, "REPOSITIONED_TESSELLATED_ITEM", 0).reference(0)) : Axes());
    const Fields items = m_entities.own(number, "TESSELLATED_GEOMETRIC_SET", 1).list(0);
    for (std::size_t i = 0; i < items.size() && m_pen.take(1); ++i)
        drawItem(items.reference(i), places);
}

void Tessellation::drawItem(std::uint32_t number, const Places& places)
{
    if (isSet(number))
        return drawSet(number, places);
    const Fields item = m_entities.at(number);
    const std::string_view type = item.type();
    const bool isFace = type == "TRIANGULATED_FACE" || type == "COMPLEX_TRIANGULATED_FACE";
    if (type == "TESSELLATED_CURVE_SET")
        drawCurves(item, places);
    else if (isFace || type == "TRIANGULATED_SURFACE_SET" || type == "COMPLEX_TRIANGULATED_SURFACE_SET")
        drawSurface(item, isFace, places);
    else
        m_pen.countUnread(type);
}

void Tessellation::drawCurves(const Fields& set, const Places& places)
{
    const Points& points = pointsOf(set.reference(1));
    const Fields strips = set.list(2);
    for (std::size_t i = 0; i < strips.size(); ++i) {
        const Fields strip = strips.list(i);
        if (!m_pen.take(strip.size()))
            return;
        Points line;
        for (std::size_t k = 0; k < strip.size(); ++k) {
            const std::size_t number = strip.index(k);
            if (number > 0 && number <= points.size()) {
                line.push_back(placed(points[number - 1], places));
                continue;
            }
            m_pen.countOutOfRange();
            m_pen.polyline(line, m_pen.style().line);
            line.clear();
        }
        m_pen.polyline(line, m_pen.style().line);
    }
}

// A face has its surface behind the normals.
void Tessellation::drawSurface(const Fields& surface, bool isFace, const Places& places)
{
    const std::size_t index = isFace ? 5 : 4;
    SurfaceCorners corners(pointsOf(surface.reference(1)), surface.list(index), places, m_pen);
    if (surface.type().starts_with("COMPLEX_")) {
        corners.addStrips(surface.list(index + 1));
        corners.addFans(surface.list(index + 2));
    } else {
        corners.addTriangles(surface.list(index + 1));
    }
    corners.draw();
}

const Tessellation::Points& Tessellation::pointsOf(std::uint32_t list)
{
    const auto [entry, isNew] = m_points.try_emplace(list);
    const Fields written = m_entities.at(list);
    if (!isNew || written.type() != "COORDINATES_LIST")
        return entry->second;
    const Fields rows = written.list(2);
    if (!m_pen.take(rows.size()))
        return entry->second;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Fields row = rows.list(i);
        entry->second.push_back({row.real(0).value_or(0), row.real(1).value_or(0), row.real(2).value_or(0)});
    }
    return entry->second;
}

} // namespace ptx::step::annotations
