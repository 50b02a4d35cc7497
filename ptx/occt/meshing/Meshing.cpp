#include "ptx/occt/meshing/Meshing.h"

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <IMeshTools_Parameters.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>

namespace ptx::occt::meshing
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

std::size_t triangleCount(const TopoDS_Shape& shape)
{
    std::size_t count = 0;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        TopLoc_Location location;
        const Handle(Poly_Triangulation)& mesh = BRep_Tool::Triangulation(TopoDS::Face(face.Current()), location);
        count += mesh.IsNull() ? 0 : static_cast<std::size_t>(mesh->NbTriangles());
    }
    return count;
}

} // namespace ptx::occt::meshing
