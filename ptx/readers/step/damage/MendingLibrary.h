#pragma once

#include <Interface_GTool.hxx>
#include <StepData_StepModel.hxx>
#include <StepSelect_StepType.hxx>
#include <StepSelect_WorkLibrary.hxx>

#include <functional>
#include <utility>

namespace ptx::step::damage
{

/// OCCT's way to read STEP, with a look at the model in between: OCCT itself walks through it as soon as it has it and
/// falls over what is not there.
class MendingLibrary : public StepSelect_WorkLibrary
{
public:
    using Mend = std::function<void(const Handle(StepData_StepModel)&)>;

    /// `mend` is called once for each text that could be read; the model knows the names of its types then.
    explicit MendingLibrary(Mend mend) : m_mend(std::move(mend)) {}

    Standard_Integer ReadStream(Standard_CString name, std::istream& text, Handle(Interface_InterfaceModel) & model,
                                const Handle(Interface_Protocol) & protocol) const override
    {
        const Standard_Integer status = StepSelect_WorkLibrary::ReadStream(name, text, model, protocol);
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

    Mend m_mend;
};

} // namespace ptx::step::damage
