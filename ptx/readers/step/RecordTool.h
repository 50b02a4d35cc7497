#pragma once

#include "ptx/core/Progress.h"

#include <StepData_StepReaderTool.hxx>

class StepData_StepModel;

namespace ptx::step
{

/// Makes OCCT's entities from tables whose references are resolved.
class RecordTool : public StepData_StepReaderTool
{
public:
    /// Reports how many entities there are, from `share` of the present stage to its end.
    RecordTool(const Handle(StepData_StepReaderData) & data, const Handle(StepData_Protocol) & protocol,
               core::Progress& progress, double share);

    void load(const Handle(StepData_StepModel) & model);

    Standard_Boolean AnalyseRecord(Standard_Integer record, const Handle(Standard_Transient) & entity,
                                   Handle(Interface_Check) & check) override;

private:
    core::Progress& m_progress;
    double m_share;
    int m_recordCount;
};

} // namespace ptx::step
