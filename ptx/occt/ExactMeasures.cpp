#include "ptx/occt/ExactMeasures.h"

#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Shape.hxx>

#include <cmath>

namespace ptx::occt
{

namespace
{

// Of an integration, relative. Without one a bolt of a real file loses 0.6 % of its volume.
constexpr double Precision = 1e-5;

double measureOr0(double value)
{
    return std::isfinite(value) ? value : 0;
}

} // namespace

/// Each solid by itself: some of a file may be inside out.
model::ExactMeasures exactMeasures(const TopoDS_Shape& shape)
{
    GProp_GProps surfaces;
    BRepGProp::SurfaceProperties(shape, surfaces, Precision);
    model::ExactMeasures measures;
    measures.area = measureOr0(surfaces.Mass());
    for (TopExp_Explorer solids(shape, TopAbs_SOLID); solids.More(); solids.Next()) {
        GProp_GProps inside;
        BRepGProp::VolumeProperties(solids.Current(), inside, Precision);
        measures.volume += measureOr0(std::abs(inside.Mass()));
    }
    return measures;
}

} // namespace ptx::occt
