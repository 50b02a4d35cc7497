#include "ptx/readers/step/damage/UnplacedOccurrences.h"

#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

namespace ptx::step::damage
{

std::vector<Loss> findUnplaced(const STEPCAFControl_Reader& reader)
{
    const Handle(XSControl_WorkSession) session = reader.Reader().WS();
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    const auto model = Handle(StepData_StepModel)::DownCast(session->Model());
    std::vector<Loss> losses;
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(model->Value(number));
        if (usage.IsNull() || !TransferBRep::ShapeResult(process, usage).IsNull())
            continue;
        const Handle(StepBasic_ProductDefinition) parent = usage->RelatingProductDefinition();
        const Fault fault{model->IdentLabel(usage), "it has no place in an assembly"};
        if (parent.IsNull())
            losses.push_back({fault, {}});
        else if (!TransferBRep::ShapeResult(process, parent).IsNull())
            losses.push_back({fault, {parent}});
    }
    return losses;
}

} // namespace ptx::step::damage
