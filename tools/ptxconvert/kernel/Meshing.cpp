#include "tools/ptxconvert/kernel/Meshing.h"

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <IMeshTools_Parameters.hxx>
#include <TopoDS_Shape.hxx>

namespace ptx
{

void tessellate(const TopoDS_Shape& shape, const Tolerance& tolerance, bool inParallel)
{
    BRepTools::Clean(shape);
    IMeshTools_Parameters parameters;
    parameters.Deflection = tolerance.deviation;
    parameters.Angle = tolerance.angle;
    parameters.InParallel = inParallel;
    const BRepMesh_IncrementalMesh mesher(shape, parameters);
}

} // namespace ptx
