#include "ptx/occt/Healing.h"

#include "ptx/occt/MissingPcurves.h"
#include "ptx/occt/SolidOrientation.h"

#include <Precision.hxx>
#include <ShapeBuild_ReShape.hxx>
#include <ShapeFix_Shape.hxx>
#include <TopExp_Explorer.hxx>

namespace ptx::occt
{

namespace
{

// Gaps of files in the wild reach this far; beyond it an edge no longer lies on its face.
constexpr double LargestTolerance = 1.0;

} // namespace

Handle(ShapeBuild_ReShape) healShape(occt::meshing::ShapeBody& body, bool inParallel)
{
    addMissingPcurves(body.shape, body.precision, inParallel);
    ShapeFix_Shape fixer(body.shape);
    fixer.SetPrecision(body.precision);
    fixer.SetMinTolerance(Precision::Confusion());
    fixer.SetMaxTolerance(LargestTolerance);
    const TopoDS_Shape healed = healUnoriented(fixer, body);
    if (healed.IsNull())
        return nullptr;
    body.shape = healed;
    return fixer.Context();
}

void followMarks(occt::meshing::ShapeBody& body, ShapeBuild_ReShape& changes)
{
    decltype(body.marks) result;
    for (decltype(body.marks)::Iterator it(body.marks); it.More(); it.Next())
        for (TopExp_Explorer item(changes.Apply(it.Key()), it.Key().ShapeType()); item.More(); item.Next())
            result.Bind(item.Current(), it.Value());
    body.marks = result;
}

void heal(occt::meshing::ShapeBody& body, bool inParallel)
{
    if (const Handle(ShapeBuild_ReShape) changes = healShape(body, inParallel); !changes.IsNull())
        followMarks(body, *changes);
}

} // namespace ptx::occt
