#include "ptx/readers/step/annotations/Tessellation.h"

namespace ptx::step::annotations
{

namespace
{

constexpr std::size_t DeepestPlace = 16;

} // namespace

Tessellation::Tessellation(const p21::Entities& entities, Pen& pen)
    : m_entities(entities), m_pen(pen), m_points(entities, [&pen](std::size_t count) { return pen.take(count); })
{
}

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
        isMoved ? facets::axesOf(m_entities, m_entities.own(number, "REPOSITIONED_TESSELLATED_ITEM", 0).reference(0))
                : facets::Axes());
    const p21::Fields items = m_entities.own(number, "TESSELLATED_GEOMETRIC_SET", 1).list(0);
    for (std::size_t i = 0; i < items.size() && m_pen.take(1); ++i)
        drawItem(items.reference(i), places);
}

void Tessellation::drawItem(std::uint32_t number, const Places& places)
{
    if (isSet(number))
        return drawSet(number, places);
    const p21::Fields item = m_entities.at(number);
    const std::string_view type = item.type();
    if (type == "TESSELLATED_CURVE_SET")
        drawCurves(item, places);
    else if (facets::Surface::isOne(type))
        drawSurface(facets::Surface(item), places);
    else
        m_pen.countUnread(type);
}

void Tessellation::drawCurves(const p21::Fields& set, const Places& places)
{
    const std::vector<Point>& points = m_points.of(set.reference(1));
    const p21::Fields strips = set.list(2);
    for (std::size_t i = 0; i < strips.size(); ++i) {
        const p21::Fields strip = strips.list(i);
        if (!m_pen.take(strip.size()))
            return;
        std::vector<Point> line;
        for (std::size_t k = 0; k < strip.size(); ++k) {
            const std::size_t number = strip.index(k);
            if (number > 0 && number <= points.size()) {
                line.push_back(facets::placed(points[number - 1], places));
                continue;
            }
            m_pen.countOutOfRange();
            m_pen.polyline(line, m_pen.style().line);
            line.clear();
        }
        m_pen.polyline(line, m_pen.style().line);
    }
}

void Tessellation::drawSurface(const facets::Surface& surface, const Places& places)
{
    facets::FaceCounts counts;
    const facets::FaceMesh mesh = facets::faceMesh(
        surface, m_points.of(surface.points()), places, false, [this] { return m_pen.take(1); }, counts);
    m_pen.count(counts);
    m_pen.triangles(mesh.points, mesh.triangles);
}

} // namespace ptx::step::annotations
