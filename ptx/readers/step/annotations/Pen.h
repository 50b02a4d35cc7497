#pragma once

#include "ptx/readers/step/annotations/Drawing.h"
#include "ptx/readers/step/facets/FaceMaker.h"

#include <span>
#include <string_view>

namespace ptx::step::annotations
{

/// The colours of one annotation.
struct Style {
    osg::Color4f line;
    osg::Color4f fill;
};

/// Draws into one callout after the other, and counts. A file that refers to the same points again and again may not
/// grow without an end: beyond a limit nothing more is drawn.
class Pen
{
public:
    explicit Pen(Drawing& drawing, std::size_t most = MostPoints) : m_drawing(drawing), m_left(most) {}

    /// Draws what comes into `callout`, which is new and has to stay where it is.
    void begin(Callout& callout);
    void use(const Style& style) { m_style = style; }
    const Style& style() const { return m_style; }
    Callout& callout() { return *m_callout; }

    void polyline(std::span<const Point> points, const osg::Color4f& color);
    /// `corners` number the points from 0, three for each triangle.
    void triangles(std::span<const Point> points, std::span<const std::uint32_t> corners);
    void countCircle() { ++m_drawing.counts.circles; }
    void countGuessedAngles() { ++m_drawing.counts.guessedAngles; }
    void count(const facets::FaceCounts& counts);
    void countOutOfRange() { ++m_drawing.counts.outOfRange; }
    /// Of an entity that nothing is drawn for.
    void countUnread(std::string_view type);

    /// Takes the work of `count` points. @return false when that is too much, for good
    bool take(std::size_t count);

private:
    static constexpr std::size_t MostPoints = 20'000'000;

    Strokes& strokes(const osg::Color4f& color);

    Drawing& m_drawing;
    std::size_t m_left;
    Callout* m_callout = nullptr;
    Style m_style;
    std::map<std::array<float, 3>, std::size_t> m_colors; ///< of the callout, where its strokes are
};

} // namespace ptx::step::annotations
