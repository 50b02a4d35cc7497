#include "ptx/readers/step/annotations/Pen.h"

namespace ptx::step::annotations
{

void Pen::begin(Callout& callout)
{
    m_callout = &callout;
    m_colors.clear();
}

void Pen::polyline(std::span<const Point> points, const osg::Color4f& color)
{
    if (points.size() < 2 || !take(points.size()))
        return;
    ++m_drawing.counts.polylines;
    m_drawing.counts.points += points.size();
    Strokes& strokes = this->strokes(color);
    const auto first = static_cast<std::uint32_t>(strokes.points.size());
    strokes.points.insert(strokes.points.end(), points.begin(), points.end());
    for (std::uint32_t i = 1; i < points.size(); ++i)
        strokes.lines.insert(strokes.lines.end(), {first + i - 1, first + i});
}

void Pen::triangles(std::span<const Point> points, std::span<const std::uint32_t> corners)
{
    if (corners.empty() || !take(points.size() + corners.size()))
        return;
    m_drawing.counts.triangles += corners.size() / 3;
    Strokes& strokes = this->strokes(m_style.fill);
    const auto first = static_cast<std::uint32_t>(strokes.points.size());
    strokes.points.insert(strokes.points.end(), points.begin(), points.end());
    for (const std::uint32_t corner : corners)
        strokes.triangles.push_back(first + corner);
}

void Pen::count(const facets::FaceCounts& counts)
{
    m_drawing.counts.joints += counts.joints;
    m_drawing.counts.outOfRange += counts.outOfRange;
}

void Pen::countUnread(std::string_view type)
{
    ++m_drawing.unread[type.empty() ? "an entity that is not there" : std::string(type)];
}

bool Pen::take(std::size_t count)
{
    if (m_drawing.counts.isCut || count > m_left) {
        m_drawing.counts.isCut = true;
        return false;
    }
    m_left -= count;
    return true;
}

Strokes& Pen::strokes(const osg::Color4f& color)
{
    std::vector<Strokes>& all = m_callout->strokes;
    const auto [entry, isNew] = m_colors.try_emplace({color.red, color.green, color.blue}, all.size());
    if (isNew)
        all.push_back({color, {}, {}, {}});
    return all[entry->second];
}

} // namespace ptx::step::annotations
