#include "tools/ptxconvert/readers/step/EntityWarnings.h"

#include "tools/ptxconvert/core/Log.h"

#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <Interface_ReportEntity.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <string>

namespace ptx::step
{

namespace
{

Handle(StepData_StepModel) modelOf(const STEPCAFControl_Reader& reader)
{
    return Handle(StepData_StepModel)::DownCast(reader.Reader().WS()->Model());
}

/// "#12 ADVANCED_FACE"
std::string nameOf(const StepData_StepModel& model, int number)
{
    const Handle(Standard_Transient) entity = model.Value(number);
    std::string name = "#";
    name += std::to_string(model.IdentLabel(entity));
    return name + " " + model.TypeName(entity);
}

void warn(const std::string& entity, const Interface_Check& check, Log& log)
{
    for (int i = 1; i <= check.NbFails(); ++i)
        log.warning(entity + ": " + check.CFail(i));
}

} // namespace

void warnOfUnreadEntities(const STEPCAFControl_Reader& reader, Log& log)
{
    const Handle(StepData_StepModel) model = modelOf(reader);
    for (int number = 1; number <= model->NbEntities(); ++number)
        if (model->IsReportEntity(number))
            warn(nameOf(*model, number), *model->ReportEntity(number)->Check(), log);
}

void warnOfUntranslatedEntities(const STEPCAFControl_Reader& reader, Log& log)
{
    const Handle(StepData_StepModel) model = modelOf(reader);
    const Interface_CheckIterator checks = reader.Reader().WS()->TransferReader()->TransientProcess()->CheckList(true);
    for (checks.Start(); checks.More(); checks.Next()) {
        const int number = checks.Number();
        const bool isKnown = number > 0 && number <= model->NbEntities();
        warn(isKnown ? nameOf(*model, number) : std::string("an entity"), *checks.Value(), log);
    }
}

} // namespace ptx::step
