#include "ptx/occt/meshing/Tolerance.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <Precision.hxx>
#include <TopoDS_Shape.hxx>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ptx
{

namespace
{

double diagonal(const TopoDS_Shape& shape)
{
    Bnd_Box box;
    BRepBndLib::Add(shape, box, false);
    return box.IsVoid() ? 0 : std::sqrt(box.SquareExtent());
}

} // namespace

Tolerance toleranceFor(const TopoDS_Shape& shape, const Settings& settings)
{
    double deviation = settings.number(Setting::Deviation);
    if (deviation == 0)
        deviation = settings.number(Setting::RelativeDeviation) * diagonal(shape);
    return {std::max(deviation, 10 * Precision::Confusion()), settings.number(Setting::Angle) * std::numbers::pi / 180};
}

double stitchTolerance(const TopoDS_Shape& shape, const Settings& settings)
{
    const double absolute = settings.number(Setting::StitchTolerance);
    const double relative = settings.number(Setting::StitchRelativeTolerance);
    return std::max(absolute > 0 ? absolute : relative * diagonal(shape), Precision::Confusion());
}

} // namespace ptx
