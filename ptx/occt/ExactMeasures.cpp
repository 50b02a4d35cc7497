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

double measureOr0(double value)
{
    return std::isfinite(value) ? value : 0;
}

} // namespace

/// Each solid by itself: some of a file may be inside out.
model::ExactMeasures exactMeasures(const TopoDS_Shape& shape)
{
    GProp_GProps surfaces;
    BRepGProp::SurfaceProperties(shape, surfaces);
    model::ExactMeasures measures;
    measures.area = measureOr0(surfaces.Mass());
    for (TopExp_Explorer solids(shape, TopAbs_SOLID); solids.More(); solids.Next()) {
        GProp_GProps inside;
        BRepGProp::VolumeProperties(solids.Current(), inside);
        measures.volume += measureOr0(std::abs(inside.Mass()));
    }
    return measures;
}

} // namespace ptx::occt
