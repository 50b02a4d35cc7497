#include "ptx/occt/meshing/SurfaceCoordinates.h"

#include <GeomAdaptor_Surface.hxx>
#include <Standard_Failure.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <gp_Cone.hxx>
#include <gp_Cylinder.hxx>
#include <gp_Sphere.hxx>
#include <gp_Torus.hxx>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace ptx::occt::meshing
{

namespace
{

/// The mean of the cosine between two angles.
double meanCosine(double low, double high)
{
    constexpr double tiny = 1e-9;
    return high - low > tiny ? (std::sin(high) - std::sin(low)) / (high - low) : std::cos(low);
}

/// Where lines of a parameter are measured from `low` to `high`: between two knots the same number of steps.
std::vector<double> stepsBetween(double low, double high, const TColStd_Array1OfReal& knots)
{
    std::vector<double> ends = {low};
    for (const double knot : knots)
        if (knot > ends.back() && knot < high)
            ends.push_back(knot);
    ends.push_back(high);
    constexpr std::size_t leastInAll = 16, leastInSpan = 4;
    const std::size_t spans = ends.size() - 1;
    const std::size_t count = std::max(leastInSpan, (leastInAll + spans - 1) / spans);
    std::vector<double> steps = {low};
    for (std::size_t span = 0; span < spans; ++span)
        for (std::size_t i = 1; i <= count; ++i)
            steps.push_back(ends[span] +
                            static_cast<double>(i) / static_cast<double>(count) * (ends[span + 1] - ends[span]));
    return steps;
}

/// The length of lines of a surface on which one parameter runs, in the mean of several.
class LengthTable
{
public:
    /// @param steps values of the running parameter, ascending
    /// @param speed the mean length for each unit of the running parameter, at a value of it
    template <class Speed>
    LengthTable(std::vector<double> steps, const Speed& speed) : m_steps(std::move(steps))
    {
        for (std::size_t i = 0; i < m_steps.size(); ++i) {
            m_speeds.push_back(speed(m_steps[i]));
            const double width = i == 0 ? 0 : m_steps[i] - m_steps[i - 1];
            const double simpson = i == 0 ? 0 : m_speeds[i - 1] + 4 * speed(m_steps[i] - width / 2) + m_speeds[i];
            m_lengths.push_back(i == 0 ? 0 : m_lengths.back() + width / 6 * simpson);
        }
    }

    /// By cubic interpolation with the speeds.
    double length(double parameter) const
    {
        const auto next = std::upper_bound(m_steps.begin() + 1, m_steps.end() - 1, parameter);
        const auto i = static_cast<std::size_t>(next - m_steps.begin());
        const double width = m_steps[i] - m_steps[i - 1];
        const double t = width > 0 ? std::clamp((parameter - m_steps[i - 1]) / width, 0.0, 1.0) : 0;
        const double r = 1 - t;
        return r * r * (1 + 2 * t) * m_lengths[i - 1] + t * t * (3 - 2 * t) * m_lengths[i] +
               width * t * r * (r * m_speeds[i - 1] - t * m_speeds[i]);
    }

    double meanSpeed() const
    {
        const double width = m_steps.back() - m_steps.front();
        return width > 0 ? m_lengths.back() / width : 0;
    }

private:
    std::vector<double> m_steps;
    std::vector<double> m_speeds;  ///< at each step
    std::vector<double> m_lengths; ///< up to each step
};

/// The mean of a derivative's length at several places between two values of the other parameter. Without those where
/// the surface has none, as an offset one at a tip.
template <class Derivative>
double meanSpeed(double low, double high, const Derivative& derivative)
{
    constexpr int lines = 8;
    double sum = 0;
    int count = 0;
    for (int line = 0; line < lines; ++line) {
        try {
            sum += derivative(low + (line + 0.5) / lines * (high - low)).Magnitude();
            ++count;
        } catch (const Standard_Failure&) {
        }
    }
    return count > 0 ? sum / count : 0;
}

/// The derivatives along u and v.
std::pair<gp_Vec, gp_Vec> derivativesOf(const GeomAdaptor_Surface& form, double u, double v)
{
    gp_Pnt point;
    std::pair<gp_Vec, gp_Vec> result;
    form.D1(u, v, point, result.first, result.second);
    return result;
}

} // namespace

SurfaceCoordinates::SurfaceCoordinates(const Handle(Geom_Surface) & surface, const gp_Pnt2d& low, const gp_Pnt2d& high)
{
    const GeomAdaptor_Surface form(surface);
    switch (form.GetType()) {
    case GeomAbs_Plane:
        scale(1, 1);
        break;
    case GeomAbs_Cylinder:
        scale(form.Cylinder().Radius(), 1);
        break;
    case GeomAbs_Cone:
        unroll(form.Cone().RefRadius(), form.Cone().SemiAngle(), (low.X() + high.X()) / 2);
        break;
    case GeomAbs_Sphere:
        scale(form.Sphere().Radius() * meanCosine(low.Y(), high.Y()), form.Sphere().Radius());
        break;
    case GeomAbs_Torus:
        scale(form.Torus().MajorRadius() + form.Torus().MinorRadius() * meanCosine(low.Y(), high.Y()),
              form.Torus().MinorRadius());
        break;
    default:
        measure(form, low, high);
    }
}

void SurfaceCoordinates::scale(double u, double v)
{
    m_meanSpeeds = {u, v};
    m_map = [u, v](const gp_Pnt2d& at) { return gp_XY(u * at.X(), v * at.Y()); };
}

/// The point at v is v and the distance of v = 0 away from the tip, and the unrolled angle is u sin(semi-angle).
/// Without differences of large numbers, for cones that are nearly cylinders.
void SurfaceCoordinates::unroll(double radius, double semiAngle, double middle)
{
    const double sine = std::sin(semiAngle);
    const double tip = radius / sine;
    m_map = [sine, tip, middle](const gp_Pnt2d& at) {
        const double angle = (at.X() - middle) * sine;
        const double half = std::sin(angle / 2);
        return gp_XY((tip + at.Y()) * std::sin(angle), at.Y() * std::cos(angle) - 2 * tip * half * half);
    };
}

void SurfaceCoordinates::measure(const GeomAdaptor_Surface& form, const gp_Pnt2d& low, const gp_Pnt2d& high)
{
    TColStd_Array1OfReal knotsOfU(1, form.NbUIntervals(GeomAbs_CN) + 1), knotsOfV(1, form.NbVIntervals(GeomAbs_CN) + 1);
    form.UIntervals(knotsOfU, GeomAbs_CN);
    form.VIntervals(knotsOfV, GeomAbs_CN);
    const LengthTable alongU(stepsBetween(low.X(), high.X(), knotsOfU), [&](double u) {
        return meanSpeed(low.Y(), high.Y(), [&](double v) { return derivativesOf(form, u, v).first; });
    });
    const LengthTable alongV(stepsBetween(low.Y(), high.Y(), knotsOfV), [&](double v) {
        return meanSpeed(low.X(), high.X(), [&](double u) { return derivativesOf(form, u, v).second; });
    });
    m_meanSpeeds = {alongU.meanSpeed(), alongV.meanSpeed()};
    m_map = [alongU, alongV](const gp_Pnt2d& at) { return gp_XY(alongU.length(at.X()), alongV.length(at.Y())); };
}

} // namespace ptx::occt::meshing
