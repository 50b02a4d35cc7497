#include "ptx/occt/meshing/ShapeQueries.h"

#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>

namespace ptx::occt::meshing
{

namespace
{

bool isFree(const TopoDS_Edge& edge, const TopTools_ListOfShape& faces)
{
    return faces.Extent() == 1 && !BRep_Tool::Degenerated(edge) &&
           !BRep_Tool::IsClosed(edge, TopoDS::Face(faces.First()));
}

} // namespace

bool hasGeometry(const TopoDS_Shape& shape)
{
    return TopExp_Explorer(shape, TopAbs_FACE).More() || TopExp_Explorer(shape, TopAbs_EDGE).More();
}

std::size_t faceCount(const TopoDS_Shape& shape)
{
    std::size_t count = 0;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        ++count;
    return count;
}

std::size_t freeEdgeCount(const TopoDS_Shape& shape)
{
    TopTools_IndexedDataMapOfShapeListOfShape faces;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, faces);
    std::size_t count = 0;
    for (int i = 1; i <= faces.Extent(); ++i)
        count += isFree(TopoDS::Edge(faces.FindKey(i)), faces(i)) ? 1 : 0;
    return count;
}

} // namespace ptx::occt::meshing
