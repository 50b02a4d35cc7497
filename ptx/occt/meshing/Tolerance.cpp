#include "ptx/occt/meshing/Tolerance.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <Precision.hxx>
#include <TopoDS_Shape.hxx>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ptx::occt::meshing
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

Tolerance toleranceFor(const TopoDS_Shape& shape, const core::Settings& settings)
{
    double deviation = settings.number(core::Setting::Deviation);
    if (deviation == 0)
        deviation = settings.number(core::Setting::RelativeDeviation) * diagonal(shape);
    return {std::max(deviation, 10 * Precision::Confusion()),
            settings.number(core::Setting::Angle) * std::numbers::pi / 180};
}

double stitchTolerance(const TopoDS_Shape& shape, const core::Settings& settings)
{
    const double absolute = settings.number(core::Setting::StitchTolerance);
    const double relative = settings.number(core::Setting::StitchRelativeTolerance);
    return std::max(absolute > 0 ? absolute : relative * diagonal(shape), Precision::Confusion());
}

} // namespace ptx::occt::meshing
