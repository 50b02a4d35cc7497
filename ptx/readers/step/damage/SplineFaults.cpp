#include "ptx/readers/step/damage/SplineFaults.h"

#include <StepGeom_BSplineCurveWithKnots.hxx>
#include <StepGeom_BSplineCurveWithKnotsAndRationalBSplineCurve.hxx>
#include <StepGeom_BSplineSurfaceWithKnots.hxx>
#include <StepGeom_BSplineSurfaceWithKnotsAndRationalBSplineSurface.hxx>
#include <StepGeom_BezierCurveAndRationalBSplineCurve.hxx>
#include <StepGeom_BezierSurfaceAndRationalBSplineSurface.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_QuasiUniformCurveAndRationalBSplineCurve.hxx>
#include <StepGeom_QuasiUniformSurfaceAndRationalBSplineSurface.hxx>
#include <StepGeom_RationalBSplineCurve.hxx>
#include <StepGeom_RationalBSplineSurface.hxx>
#include <StepGeom_UniformCurveAndRationalBSplineCurve.hxx>
#include <StepGeom_UniformSurfaceAndRationalBSplineSurface.hxx>

namespace ptx::step::damage
{

namespace
{

template <class List>
bool isEmpty(const Handle(List) & list)
{
    return list.IsNull() || list->Length() == 0;
}

template <class Table>
bool isEmptyTable(const Handle(Table) & table)
{
    return table.IsNull() || table->ColLength() == 0 || table->RowLength() == 0;
}

/// Whether a point is missing, as in a row that is shorter than the first.
template <class Points>
bool hasHoles(const Points& points)
{
    for (typename Points::Iterator point(points); point.More(); point.Next())
        if (point.Value().IsNull())
            return true;
    return false;
}

/// A B-spline has at least one point more than its degree, and the degree is at least 1.
bool fitsDegree(int degree, int points)
{
    return degree >= 1 && degree < points;
}

template <class Numbers, class Knots>
bool fit(const Handle(Numbers) & multiplicities, const Handle(Knots) & knots)
{
    return !isEmpty(multiplicities) && !isEmpty(knots) && multiplicities->Length() == knots->Length();
}

std::string faultOf(const StepGeom_BSplineCurve& curve)
{
    if (isEmpty(curve.ControlPointsList()) || hasHoles(curve.ControlPointsList()->Array1()))
        return "control points are missing";
    if (!fitsDegree(curve.Degree(), curve.NbControlPointsList()))
        return "its degree does not fit its control points";
    return {};
}

std::string faultOf(const StepGeom_BSplineSurface& surface)
{
    const Handle(StepGeom_HArray2OfCartesianPoint) points = surface.ControlPointsList();
    if (isEmptyTable(points) || hasHoles(points->Array2()))
        return "control points are missing";
    if (!fitsDegree(surface.UDegree(), points->ColLength()) || !fitsDegree(surface.VDegree(), points->RowLength()))
        return "its degrees do not fit its control points";
    return {};
}

constexpr const char* UnfitKnots = "its knots and their multiplicities do not fit each other";
constexpr const char* UnfitWeights = "its weights do not fit its control points";

std::string knotFault(const StepGeom_BSplineCurveWithKnots& curve)
{
    return fit(curve.KnotMultiplicities(), curve.Knots()) ? std::string() : UnfitKnots;
}

std::string knotFault(const StepGeom_BSplineSurfaceWithKnots& surface)
{
    return fit(surface.UMultiplicities(), surface.UKnots()) && fit(surface.VMultiplicities(), surface.VKnots())
               ? std::string()
               : UnfitKnots;
}

std::string weightFault(const StepGeom_RationalBSplineCurve& curve, int points)
{
    return isEmpty(curve.WeightsData()) || curve.NbWeightsData() != points ? UnfitWeights : std::string();
}

std::string weightFault(const StepGeom_RationalBSplineSurface& surface, const StepGeom_HArray2OfCartesianPoint& points)
{
    const Handle(TColStd_HArray2OfReal) weights = surface.WeightsData();
    return isEmptyTable(weights) || weights->ColLength() != points.ColLength() ||
                   weights->RowLength() != points.RowLength()
               ? UnfitWeights
               : std::string();
}

/// The weights of `spline`, of itself or of the first of `Complexes` that it is; null if it has none.
template <class Rational, class... Complexes, class Spline, class Member>
Handle(Rational) rationalOf(const Handle(Spline) & spline, Member member)
{
    Handle(Rational) found = Handle(Rational)::DownCast(spline);
    const auto look = [&](const auto& complex) {
        if (found.IsNull() && !complex.IsNull())
            found = member(*complex);
    };
    (look(Handle(Complexes)::DownCast(spline)), ...);
    return found;
}

Handle(StepGeom_RationalBSplineCurve) rationalCurve(const Handle(StepGeom_BSplineCurve) & curve)
{
    return rationalOf<StepGeom_RationalBSplineCurve, StepGeom_BSplineCurveWithKnotsAndRationalBSplineCurve,
                      StepGeom_BezierCurveAndRationalBSplineCurve, StepGeom_UniformCurveAndRationalBSplineCurve,
                      StepGeom_QuasiUniformCurveAndRationalBSplineCurve>(
        curve, [](const auto& complex) { return complex.RationalBSplineCurve(); });
}

Handle(StepGeom_RationalBSplineSurface) rationalSurface(const Handle(StepGeom_BSplineSurface) & surface)
{
    return rationalOf<StepGeom_RationalBSplineSurface, StepGeom_BSplineSurfaceWithKnotsAndRationalBSplineSurface,
                      StepGeom_BezierSurfaceAndRationalBSplineSurface, StepGeom_UniformSurfaceAndRationalBSplineSurface,
                      StepGeom_QuasiUniformSurfaceAndRationalBSplineSurface>(
        surface, [](const auto& complex) { return complex.RationalBSplineSurface(); });
}

std::string curveFault(const Handle(StepGeom_BSplineCurve) & curve)
{
    std::string fault = faultOf(*curve);
    if (!fault.empty())
        return fault;
    auto knots = Handle(StepGeom_BSplineCurveWithKnots)::DownCast(curve);
    using Complex = StepGeom_BSplineCurveWithKnotsAndRationalBSplineCurve;
    if (const auto both = Handle(Complex)::DownCast(curve); !both.IsNull())
        knots = both->BSplineCurveWithKnots();
    if (!knots.IsNull())
        fault = knotFault(*knots);
    const Handle(StepGeom_RationalBSplineCurve) rational = rationalCurve(curve);
    if (fault.empty() && !rational.IsNull())
        fault = weightFault(*rational, curve->NbControlPointsList());
    return fault;
}

std::string surfaceFault(const Handle(StepGeom_BSplineSurface) & surface)
{
    std::string fault = faultOf(*surface);
    if (!fault.empty())
        return fault;
    auto knots = Handle(StepGeom_BSplineSurfaceWithKnots)::DownCast(surface);
    using Complex = StepGeom_BSplineSurfaceWithKnotsAndRationalBSplineSurface;
    if (const auto both = Handle(Complex)::DownCast(surface); !both.IsNull())
        knots = both->BSplineSurfaceWithKnots();
    if (!knots.IsNull())
        fault = knotFault(*knots);
    const Handle(StepGeom_RationalBSplineSurface) rational = rationalSurface(surface);
    if (fault.empty() && !rational.IsNull())
        fault = weightFault(*rational, *surface->ControlPointsList());
    return fault;
}

} // namespace

std::string splineFault(const Handle(Standard_Transient) & entity)
{
    if (const auto curve = Handle(StepGeom_BSplineCurve)::DownCast(entity); !curve.IsNull())
        return curveFault(curve);
    if (const auto surface = Handle(StepGeom_BSplineSurface)::DownCast(entity); !surface.IsNull())
        return surfaceFault(surface);
    return {};
}

bool isSpline(const Handle(Standard_Transient) & entity)
{
    return entity->IsKind(STANDARD_TYPE(StepGeom_BSplineCurve)) ||
           entity->IsKind(STANDARD_TYPE(StepGeom_BSplineSurface));
}

} // namespace ptx::step::damage
