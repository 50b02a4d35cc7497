#include "ptx/readers/step/annotations/Splines.h"

#include "ptx/readers/step/facets/Axes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ptx::step::annotations
{

namespace
{

constexpr std::size_t MostDegree = 15;
constexpr int StepsOfSpan = 8;

/// Coordinates times weight, and the weight.
using Weighted = std::array<double, 4>;

struct Spline {
    std::size_t degree = 0;
    std::vector<Weighted> points;
    std::vector<double> knots; ///< each as often as it counts

    bool fits() const
    {
        return degree >= 1 && degree <= MostDegree && points.size() > degree &&
               knots.size() == points.size() + degree + 1 && std::is_sorted(knots.begin(), knots.end()) &&
               knots[degree] < knots[points.size()];
    }

    /// The point at `t` within the span that begins with knot `span`, by repeated mixing of neighbours.
    Point at(std::size_t span, double t) const
    {
        std::array<Weighted, MostDegree + 1> mixed;
        for (std::size_t i = 0; i <= degree; ++i)
            mixed[i] = points[span - degree + i];
        for (std::size_t round = 1; round <= degree; ++round)
            for (std::size_t i = degree; i >= round; --i) {
                const double low = knots[span - degree + i], high = knots[span + 1 + i - round];
                const double part = high > low ? (t - low) / (high - low) : 0;
                for (std::size_t k = 0; k < mixed[i].size(); ++k)
                    mixed[i][k] = mixed[i - 1][k] * (1 - part) + mixed[i][k] * part;
            }
        const Weighted& point = mixed[degree];
        return {point[0] / point[3], point[1] / point[3], point[2] / point[3]};
    }
};

bool takePoints(const p21::Entities& entities, std::uint32_t number, Spline& spline)
{
    const p21::Fields list = entities.own(number, "B_SPLINE_CURVE", 1).list(1);
    const p21::Fields weights = entities.isA(number, "RATIONAL_B_SPLINE_CURVE")
                                    ? entities.own(number, "RATIONAL_B_SPLINE_CURVE", 0).list(0)
                                    : p21::Fields();
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::optional<Point> point = facets::tripleOf(entities, list.reference(i));
        const double weight = weights ? weights.real(i).value_or(0) : 1;
        if (!point || !(weight > 0) || !std::isfinite(weight))
            return false;
        spline.points.push_back({(*point)[0] * weight, (*point)[1] * weight, (*point)[2] * weight, weight});
    }
    return true;
}

/// Knots that count more often than a curve of that degree can use are none.
bool takeKnots(const p21::Entities& entities, std::uint32_t number, Spline& spline)
{
    const p21::Fields own = entities.own(number, "B_SPLINE_CURVE_WITH_KNOTS", 6);
    const p21::Fields counts = own.list(0), values = own.list(1);
    if (counts.size() != values.size())
        return false;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const std::optional<double> value = values.real(i);
        if (!value || !std::isfinite(*value) || counts.index(i) > spline.degree + 1)
            return false;
        spline.knots.insert(spline.knots.end(), counts.index(i), *value);
    }
    return true;
}

} // namespace

bool isSpline(const p21::Entities& entities, std::uint32_t number)
{
    return entities.isA(number, "B_SPLINE_CURVE_WITH_KNOTS");
}

std::optional<std::vector<Point>> splinePoints(const p21::Entities& entities, std::uint32_t number, Pen& pen)
{
    Spline spline;
    const p21::Fields general = entities.own(number, "B_SPLINE_CURVE", 1);
    spline.degree = general.index(0);
    const std::size_t work = StepsOfSpan * general.list(1).size();
    if (!pen.take(work) || !takePoints(entities, number, spline) || !takeKnots(entities, number, spline) ||
        !spline.fits())
        return std::nullopt;
    std::vector<Point> points = {spline.at(spline.degree, spline.knots[spline.degree])};
    const int steps = spline.degree == 1 ? 1 : StepsOfSpan;
    for (std::size_t span = spline.degree; span < spline.points.size(); ++span) {
        const double low = spline.knots[span], high = spline.knots[span + 1];
        for (int step = 1; step <= steps && high > low; ++step)
            points.push_back(spline.at(span, low + (high - low) * step / steps));
    }
    return points;
}

} // namespace ptx::step::annotations
