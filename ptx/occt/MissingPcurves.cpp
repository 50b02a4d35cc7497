#include "ptx/occt/MissingPcurves.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom_ElementarySurface.hxx>
#include <OSD_Parallel.hxx>
#include <ShapeAnalysis_Edge.hxx>
#include <ShapeAnalysis_Surface.hxx>
#include <ShapeBuild_Edge.hxx>
#include <ShapeFix_Edge.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_DataMapOfShapeInteger.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>

#include <vector>

namespace ptx::occt
{

namespace
{

/// An edge without a curve on its face, and a copy of it that any thread may change.
struct Projection {
    TopoDS_Edge edge;
    TopoDS_Edge copy;
};

struct FaceWork {
    Handle(Geom_Surface) surface;
    TopLoc_Location location;
    std::vector<Projection> projections;
};

/// A seam is twice in its face.
bool isLacking(const TopoDS_Edge& edge, const FaceWork& work, const TopTools_DataMapOfShapeInteger& uses)
{
    return uses.Find(edge) == 1 && !BRep_Tool::Degenerated(edge) &&
           !ShapeAnalysis_Edge().HasPCurve(edge, work.surface, work.location);
}

FaceWork workOn(const TopoDS_Face& face, double precision)
{
    FaceWork work;
    work.surface = BRep_Tool::Surface(face, work.location);
    if (work.surface.IsNull() || work.surface->IsKind(STANDARD_TYPE(Geom_ElementarySurface)))
        return work;
    TopTools_DataMapOfShapeInteger uses;
    for (TopExp_Explorer item(face, TopAbs_EDGE); item.More(); item.Next())
        if (!uses.Bind(item.Current(), 1))
            ++uses.ChangeFind(item.Current());
    // In the order of the wires: a projection starts where the one before ended.
    for (TopExp_Explorer item(face, TopAbs_EDGE); item.More(); item.Next())
        if (const TopoDS_Edge& edge = TopoDS::Edge(item.Current()); isLacking(edge, work, uses))
            work.projections.push_back({edge, ShapeBuild_Edge().Copy(edge)});
    if (!work.projections.empty() && ShapeAnalysis_Surface(work.surface).HasSingularities(precision))
        work.projections.clear();
    return work;
}

void project(FaceWork& work, double precision)
{
    const Handle(ShapeAnalysis_Surface) analysis = new ShapeAnalysis_Surface(work.surface);
    const Handle(ShapeFix_Edge) fixer = new ShapeFix_Edge;
    for (const Projection& projection : work.projections) {
        try {
            fixer->FixAddPCurve(projection.copy, work.surface, work.location, false, analysis, precision);
        } catch (const Standard_Failure&) {
            continue; // the healing meets the same failure, and tells it
        }
    }
}

void takeOver(const Projection& projection, const FaceWork& work)
{
    double first = 0;
    double last = 0;
    const Handle(Geom2d_Curve) curve =
        BRep_Tool::CurveOnSurface(projection.copy, work.surface, work.location, first, last);
    if (curve.IsNull())
        return;
    const BRep_Builder builder;
    builder.UpdateEdge(projection.edge, curve, work.surface, work.location, BRep_Tool::Tolerance(projection.copy));
    builder.Range(projection.edge, work.surface, work.location, first, last);
    if (!BRep_Tool::SameRange(projection.copy))
        builder.SameRange(projection.edge, false);
    if (!BRep_Tool::SameParameter(projection.copy))
        builder.SameParameter(projection.edge, false);
}

} // namespace

void addMissingPcurves(const TopoDS_Shape& shape, double precision, bool inParallel)
{
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    std::vector<FaceWork> all;
    for (TopTools_IndexedMapOfShape::Iterator face(faces); face.More(); face.Next())
        if (FaceWork work = workOn(TopoDS::Face(face.Value()), precision); !work.projections.empty())
            all.push_back(std::move(work));
    OSD_Parallel::For(
        0, static_cast<int>(all.size()), [&](int i) { project(all[static_cast<std::size_t>(i)], precision); },
        !inParallel);
    for (const FaceWork& work : all)
        for (const Projection& projection : work.projections)
            takeOver(projection, work);
}

} // namespace ptx::occt
