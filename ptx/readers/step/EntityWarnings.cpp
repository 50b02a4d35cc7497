#include "ptx/readers/step/EntityWarnings.h"

#include "ptx/core/Log.h"
#include "ptx/readers/step/ExternalNames.h"

#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <Interface_ReportEntity.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace ptx::step
{

namespace
{

Handle(StepData_StepModel) modelOf(const STEPCAFControl_Reader& reader)
{
    return Handle(StepData_StepModel)::DownCast(reader.Reader().WS()->Model());
}

/// Collects complaints. Whole files share a habit, so those of one type of entity with one text are told once.
class Complaints
{
public:
    explicit Complaints(Handle(StepData_StepModel) model) : m_model(std::move(model)) {}

    void add(int number, const Interface_Check& check)
    {
        for (int i = 1; i <= check.NbFails(); ++i) {
            if (ExternalNames::isAboutMark(check.CFail(i)))
                continue;
            const auto [entry, isNew] = m_numbers.try_emplace({typeOf(number), check.CFail(i)}, m_complaints.size());
            if (isNew)
                m_complaints.push_back({number, check.CFail(i)});
            ++m_complaints[entry->second].count;
        }
    }

    void warn(core::Log& log) const
    {
        for (const Complaint& complaint : m_complaints) {
            std::string text = nameOf(complaint.number) + ": " + complaint.text;
            if (complaint.count > 1)
                text += " (and " + std::to_string(complaint.count - 1) + " more)";
            log.warning(text);
        }
    }

private:
    struct Complaint {
        int number; ///< of the first entity, in the model
        std::string text;
        std::size_t count = 0;
    };

    bool isKnown(int number) const { return number > 0 && number <= m_model->NbEntities(); }

    std::string typeOf(int number) const { return isKnown(number) ? m_model->TypeName(m_model->Value(number)) : ""; }

    /// "#12 ADVANCED_FACE"
    std::string nameOf(int number) const
    {
        if (!isKnown(number))
            return "an entity";
        std::string name = "#";
        name += std::to_string(m_model->IdentLabel(m_model->Value(number)));
        return name + " " + typeOf(number);
    }

    Handle(StepData_StepModel) m_model;
    std::vector<Complaint> m_complaints;
    std::map<std::pair<std::string, std::string>, std::size_t> m_numbers; ///< of complaints, by type and text
};

} // namespace

void warnOfUnreadEntities(const Handle(StepData_StepModel) & model, core::Log& log)
{
    Complaints complaints(model);
    for (int number = 1; number <= model->NbEntities(); ++number)
        if (model->IsReportEntity(number))
            complaints.add(number, *model->ReportEntity(number)->Check());
    complaints.warn(log);
}

void warnOfUntranslatedEntities(const STEPCAFControl_Reader& reader, core::Log& log)
{
    Complaints complaints(modelOf(reader));
    const Interface_CheckIterator checks = reader.Reader().WS()->TransferReader()->TransientProcess()->CheckList(true);
    for (checks.Start(); checks.More(); checks.Next())
        complaints.add(checks.Number(), *checks.Value());
    complaints.warn(log);
}

} // namespace ptx::step
