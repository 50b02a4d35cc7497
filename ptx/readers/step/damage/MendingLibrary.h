#pragma once

#include <Interface_GTool.hxx>
#include <StepData_StepModel.hxx>
#include <StepSelect_StepType.hxx>
#include <StepSelect_WorkLibrary.hxx>

#include <functional>
#include <utility>

namespace ptx::step::damage
{

/// A way to read STEP, with a look at the model in between: OCCT itself walks through it as soon as it has it and
/// falls over what is not there.
class MendingLibrary : public StepSelect_WorkLibrary
{
public:
    using Mend = std::function<void(const Handle(StepData_StepModel)&)>;

    /// `reader` reads the files. `mend` is called once for each text that could be read; the model knows the names of
    /// its types then.
    MendingLibrary(const Handle(IFSelect_WorkLibrary) & reader, Mend mend) : m_reader(reader), m_mend(std::move(mend))
    {
    }

    Standard_Integer ReadFile(Standard_CString name, Handle(Interface_InterfaceModel) & model,
                              const Handle(Interface_Protocol) & protocol) const override
    {
        const Standard_Integer status = m_reader->ReadFile(name, model, protocol);
        const auto step = Handle(StepData_StepModel)::DownCast(model);
        if (status != 0 || step.IsNull())
            return status;
        nameTypes(*step, protocol);
        m_mend(step);
        return status;
    }

private:
    // The session does the same, but later.
    static void nameTypes(StepData_StepModel& model, const Handle(Interface_Protocol) & protocol)
    {
        Handle(StepSelect_StepType) names = new StepSelect_StepType;
        names->SetProtocol(protocol);
        Handle(Interface_GTool) tool = new Interface_GTool(protocol);
        tool->SetSignType(names);
        model.SetGTool(tool);
    }

    Handle(IFSelect_WorkLibrary) m_reader;
    Mend m_mend;
};

} // namespace ptx::step::damage
