#pragma once

#include "ptx/readers/step/annotations/Angles.h"
#include "ptx/readers/step/annotations/Pen.h"
#include "ptx/readers/step/p21/Entities.h"

namespace ptx::step::annotations
{

/// Makes polylines of curves: polylines, circles and ellipses, B-splines, parts of circles and lines, and what is
/// composed of these.
class Curves
{
public:
    /// Both outlive this object.
    Curves(const p21::Entities& entities, Pen& pen) : m_entities(entities), m_pen(pen), m_angles(entities) {}

    /// The angles at which curves end are in the unit that the context `number` assigns from now on; where it assigns
    /// none they are radians, or degrees when one is more than a full turn.
    void useContext(std::uint32_t number) { m_radians = m_angles.radiansIn(number); }
    /// Draws the curve `number`. @return whether it is one that can be drawn; the pen counts it if not
    bool draw(std::uint32_t number, const osg::Color4f& color);
    /// Fills what is within the closed curves `bounds`: the one that reaches farthest goes around the others, which are
    /// holes. @return whether all of them are curves that can be drawn; the pen counts the others
    bool fill(const p21::Fields& bounds);

private:
    std::optional<std::vector<Point>> pointsOf(std::uint32_t number, int depth);
    std::optional<std::vector<Point>> polyline(const p21::Fields& curve) const;
    std::optional<std::vector<Point>> trimmed(const p21::Fields& curve);
    std::optional<std::vector<Point>> composed(const p21::Fields& curve, int depth);
    std::optional<Point> trim(const p21::Fields& trims, const p21::Fields& basis) const;
    std::optional<std::vector<Point>> trimmedEllipse(const p21::Fields& curve, const p21::Fields& basis) const;

    const p21::Entities& m_entities;
    Pen& m_pen;
    Angles m_angles;
    std::optional<double> m_radians; ///< in the unit of angles; nothing when it is not known
};

} // namespace ptx::step::annotations
