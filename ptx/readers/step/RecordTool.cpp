#include "ptx/readers/step/RecordTool.h"

#include <Interface_Check.hxx>
#include <StepData_FileRecognizer.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepReaderData.hxx>

#include <algorithm>

namespace ptx::step
{

namespace
{
constexpr int RecordsPerReport = 4096;
}

RecordTool::RecordTool(const Handle(StepData_StepReaderData) & data, const Handle(StepData_Protocol) & protocol,
                       core::Progress& progress, double share)
    : StepData_StepReaderTool(data, protocol), m_progress(progress), m_share(share),
      m_recordCount(std::max(1, data->NbRecords()))
{
    SetErrorHandle(true);
}

void RecordTool::load(const Handle(StepData_StepModel) & model)
{
    PrepareHeader(Handle(StepData_FileRecognizer)());
    SetEntities();
    LoadModel(model);
    if (model->Protocol().IsNull())
        model->SetProtocol(Protocol());
    Clear();
}

Standard_Boolean RecordTool::AnalyseRecord(Standard_Integer record, const Handle(Standard_Transient) & entity,
                                           Handle(Interface_Check) & check)
{
    if (record % RecordsPerReport == 0)
        m_progress.report(m_share + (1 - m_share) * record / m_recordCount);
    return StepData_StepReaderTool::AnalyseRecord(record, entity, check);
}

} // namespace ptx::step
