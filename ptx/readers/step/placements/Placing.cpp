#include "ptx/readers/step/placements/Placing.h"

#include "ptx/readers/step/placements/AssemblyIndex.h"

#include <Message_ProgressScope.hxx>
#include <STEPControl_ActorRead.hxx>
#include <STEPControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepRepr_HArray1OfRepresentationItem.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <StepRepr_Representation.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <TransferBRep.hxx>
#include <TransferBRep_ShapeBinder.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <gp_Trsf.hxx>

namespace ptx::step::placements
{

namespace
{

class Placing
{
public:
    Placing(STEPControl_Reader& reader, const std::function<void(const TopoDS_Shape&)>& translated)
        : m_reader(reader), m_translated(translated), m_index(*reader.WS()->Model()),
          m_transfer(reader.WS()->TransferReader())
    {
    }

    std::size_t run(const Message_ProgressRange& range)
    {
        const int roots = m_reader.NbRootsForTransfer();
        if (roots == 0 || !m_transfer->BeginTransfer())
            return 0;
        m_process = m_transfer->TransientProcess();
        m_actor = Handle(STEPControl_ActorRead)::DownCast(m_transfer->Actor());
        if (m_actor.IsNull() || !m_process->HasGraph())
            return 0;
        Message_ProgressScope scope(range, nullptr, roots);
        for (int i = 1; i <= roots && scope.More(); ++i) {
            const Message_ProgressRange share = scope.Next();
            if (const auto root = Handle(StepBasic_ProductDefinition)::DownCast(m_reader.RootForTransfer(i));
                !root.IsNull())
                walk(root, share);
        }
        return m_placed;
    }

private:
    using Product = Handle(StepBasic_ProductDefinition);
    enum class State { Open, Done };
    struct Step {
        Product product;
        std::size_t next = 0; ///< of its usages
    };

    // Without recursion: structures may be deep.
    void walk(const Product& root, const Message_ProgressRange& range)
    {
        Message_ProgressScope scope(range, nullptr, 1, true);
        std::vector<Step> path = {{root}};
        m_states.emplace(root.get(), State::Open);
        while (!path.empty()) {
            const Product product = path.back().product;
            const auto& usages = m_index.usagesIn(product.get());
            if (path.back().next == usages.size()) {
                path.pop_back();
                if (!path.empty() || usages.empty())
                    translate(product, usages.empty(), scope.Next());
                m_states[product.get()] = State::Done;
                continue;
            }
            const AssemblyIndex::Usage& usage = usages[path.back().next];
            const Product part = usage->RelatedProductDefinition();
            if (!part.IsNull() && m_states.emplace(part.get(), State::Open).second) {
                path.push_back({part});
                continue;
            }
            ++path.back().next;
            if (!part.IsNull() && m_states.at(part.get()) == State::Done)
                place(usage, part);
        }
    }

    void translate(const Product& product, bool isPart, const Message_ProgressRange& range)
    {
        // What throws here throws for another time where OCCT takes note of it.
        try {
            m_actor->TransferShape(product, m_process, true, false, range);
        } catch (const Standard_Failure&) {
            return;
        }
        if (isPart)
            m_translated(TransferBRep::ShapeResult(m_process, product));
    }

    void place(const AssemblyIndex::Usage& usage, const Product& part)
    {
        PlainPlacement placement;
        if (m_process->IsBound(usage) || !m_index.placementOf(usage, placement))
            return;
        TopoDS_Shape shape = TransferBRep::ShapeResult(m_process, part);
        if (shape.IsNull())
            return;
        gp_Trsf move;
        if (m_actor->ComputeTransformation(placement.from, placement.to, withItem(placement.part, placement.from),
                                           withItem(placement.assembly, placement.to), m_process, move))
            shape.Move(TopLoc_Location(move));
        m_process->Bind(usage, new TransferBRep_ShapeBinder(shape));
        ++m_placed;
    }

    /// A representation in the units of `whole` with `item` alone: OCCT looks for the item among all others.
    static Handle(StepRepr_Representation)
        withItem(const Handle(StepRepr_Representation) & whole, const Handle(StepRepr_RepresentationItem) & item)
    {
        const Handle(StepRepr_HArray1OfRepresentationItem) items = new StepRepr_HArray1OfRepresentationItem(1, 1, item);
        const Handle(StepRepr_Representation) alone = new StepRepr_Representation;
        alone->Init(whole->Name(), items, whole->ContextOfItems());
        return alone;
    }

    STEPControl_Reader& m_reader;
    const std::function<void(const TopoDS_Shape&)>& m_translated;
    AssemblyIndex m_index;
    Handle(XSControl_TransferReader) m_transfer;
    Handle(Transfer_TransientProcess) m_process;
    Handle(STEPControl_ActorRead) m_actor;
    std::unordered_map<const Standard_Transient*, State> m_states;
    std::size_t m_placed = 0;
};

} // namespace

std::size_t placeOccurrences(STEPControl_Reader& reader, const Message_ProgressRange& progress,
                             const std::function<void(const TopoDS_Shape&)>& translated)
{
    return Placing(reader, translated).run(progress);
}

} // namespace ptx::step::placements
