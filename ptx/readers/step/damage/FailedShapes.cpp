#include "ptx/readers/step/damage/FailedShapes.h"

#include "ptx/readers/step/damage/ShapeItems.h"

#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepShape_FaceSurface.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <map>
#include <unordered_set>

namespace ptx::step::damage
{

namespace
{

class FailureSearch
{
public:
    explicit FailureSearch(STEPCAFControl_Reader& reader)
        : m_transfer(reader.Reader().WS()->TransferReader()), m_process(m_transfer->TransientProcess()),
          m_graph(reader.Reader().WS()->Graph())
    {
    }

    std::vector<Fault> find()
    {
        const Interface_CheckIterator checks = m_process->CheckList(true);
        for (checks.Start(); checks.More(); checks.Next())
            if (const int number = checks.Number(); number > 0 && checks.Value()->NbFails() > 0)
                m_complaints.try_emplace(number, checks.Value()->CFail(1));
        for (const auto& [number, reason] : m_complaints)
            if (const Handle(Standard_Transient) entity = m_graph.Entity(number); isItem(entity) && !hasShape(entity))
                look(number, entity);
        return std::move(m_faults);
    }

private:
    void look(int number, const Handle(Standard_Transient) & item)
    {
        bool isExplained = false;
        for (const Handle(StepShape_ConnectedFaceSet) & shell : shellsOf(item))
            for (const Handle(StepShape_Face) & face : shell->CfsFaces()->Array1())
                if (!face.IsNull() && !isTranslatedAlone(face)) {
                    addCause(m_graph.EntityNumber(face));
                    isExplained = true;
                }
        if (!isExplained)
            add(number, m_complaints.at(number));
    }

    bool hasShape(const Handle(Standard_Transient) & entity) const
    {
        return !TransferBRep::ShapeResult(m_process, entity).IsNull();
    }

    bool isTranslatedAlone(const Handle(Standard_Transient) & face)
    {
        if (!hasShape(face))
            m_transfer->TransferOne(face);
        return hasShape(face);
    }

    /// Adds the entity below `face` that OCCT complained of, the face itself if there is none.
    void addCause(int face)
    {
        std::unordered_set<int> seen = {face};
        std::vector<int> open = {face};
        while (!open.empty()) {
            const int next = open.back();
            open.pop_back();
            if (const auto complaint = m_complaints.find(next); next != face && complaint != m_complaints.end())
                return add(next, complaint->second);
            const Interface_EntityIterator below = m_graph.Shareds(m_graph.Entity(next));
            for (below.Start(); below.More(); below.Next())
                if (const int number = m_graph.EntityNumber(below.Value()); seen.insert(number).second)
                    open.push_back(number);
        }
        add(face, "it cannot be translated");
    }

    void add(int number, std::string reason)
    {
        if (m_added.insert(number).second)
            m_faults.push_back({identOf(number), std::move(reason)});
    }

    int identOf(int number) const
    {
        return Handle(StepData_StepModel)::DownCast(m_graph.Model())->IdentLabel(m_graph.Entity(number));
    }

    Handle(XSControl_TransferReader) m_transfer;
    Handle(Transfer_TransientProcess) m_process;
    const Interface_Graph& m_graph;
    std::map<int, std::string> m_complaints; ///< the first one of OCCT, by the number of the entity in the model
    std::unordered_set<int> m_added;
    std::vector<Fault> m_faults;
};

} // namespace

std::vector<Fault> findFailedShapes(STEPCAFControl_Reader& reader)
{
    return FailureSearch(reader).find();
}

} // namespace ptx::step::damage
