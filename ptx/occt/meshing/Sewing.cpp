#include "ptx/occt/meshing/Sewing.h"

#include <BRepBuilderAPI_Sewing.hxx>
#include <BRep_Builder.hxx>
#include <Message_ProgressIndicator.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>

#include <chrono>

namespace ptx::occt::meshing
{

namespace
{

/// Asks OCCT to stop when the time is over.
class Deadline : public Message_ProgressIndicator
{
public:
    explicit Deadline(double seconds) : m_seconds(seconds) {}

    bool isOver() const
    {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_start;
        return m_seconds > 0 && passed.count() > m_seconds;
    }

private:
    Standard_Boolean UserBreak() override { return isOver(); }
    void Show(const Message_ProgressScope&, const Standard_Boolean) override {}

    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    double m_seconds;
};

decltype(ShapeBody::marks) followed(const ShapeBody& body, const BRepBuilderAPI_Sewing& sewing)
{
    decltype(body.marks) result;
    for (decltype(body.marks)::Iterator it(body.marks); it.More(); it.Next()) {
        const TopoDS_Shape& old = it.Key();
        const TopoDS_Shape now = sewing.IsModifiedSubShape(old) ? sewing.ModifiedSubShape(old) : old;
        for (TopExp_Explorer item(now, old.ShapeType()); item.More(); item.Next())
            result.Bind(item.Current(), it.Value());
    }
    return result;
}

// Sewing takes faces alone.
TopoDS_Shape withFreeEdges(const TopoDS_Shape& sewn, const TopoDS_Shape& before)
{
    TopoDS_Compound all;
    BRep_Builder builder;
    builder.MakeCompound(all);
    builder.Add(all, sewn);
    for (TopExp_Explorer edge(before, TopAbs_EDGE, TopAbs_FACE); edge.More(); edge.Next())
        builder.Add(all, edge.Current());
    return all;
}

} // namespace

SewingResult sew(ShapeBody& body, double tolerance, double seconds)
{
    BRepBuilderAPI_Sewing sewing(tolerance);
    sewing.Add(body.shape);
    Handle(Deadline) deadline = new Deadline(seconds);
    sewing.Perform(deadline->Start());
    if (deadline->isOver() || sewing.SewedShape().IsNull())
        return SewingResult::OutOfTime;
    body.marks = followed(body, sewing);
    body.shape = withFreeEdges(sewing.SewedShape(), body.shape);
    return SewingResult::Sewn;
}

} // namespace ptx::occt::meshing
