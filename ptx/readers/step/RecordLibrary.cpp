#include "ptx/readers/step/RecordLibrary.h"

#include "ptx/readers/TextFile.h"
#include "ptx/readers/step/CountingBuffer.h"
#include "ptx/readers/step/RecordTables.h"
#include "ptx/readers/step/RecordTool.h"
#include "ptx/readers/step/annotations/Annotations.h"
#include "ptx/readers/step/p21/Scan.h"

#include <Interface_Check.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepReaderData.hxx>

#include <algorithm>
#include <istream>
#include <string_view>

namespace ptx::step
{

namespace
{

// A file with one fault in its habits has it in each record.
constexpr std::size_t MostComplaints = 20;

// The shares of a stage: the text, the tables, the rest is making the entities.
constexpr double ScanShare = 0.1;
constexpr double TablesShare = 0.45;
constexpr double ParserShare = 0.7;

std::vector<std::string> complaintsOf(std::string_view text, const p21::Records& records, const p21::EntityIndex& index)
{
    std::vector<std::string> complaints;
    const std::vector<p21::Damage> damages = records.damages();
    for (const p21::Damage& damage : damages) {
        if (complaints.size() == MostComplaints)
            break;
        complaints.push_back(describe(text, damage));
    }
    if (damages.size() > MostComplaints)
        complaints.push_back(std::to_string(damages.size() - MostComplaints) + " more records are like that");
    if (!records.isComplete)
        complaints.emplace_back("the text ends without END-ISO-10303-21");
    if (!index.repeated().empty())
        complaints.push_back(std::to_string(index.repeated().size()) + " records have numbers that others have too");
    return complaints;
}

std::size_t entityCount(const p21::Records& records)
{
    std::size_t count = 0;
    for (const p21::Piece& piece : records.pieces)
        count += static_cast<std::size_t>(
            std::count_if(piece.records.begin(), piece.records.end(),
                          [](const p21::Record& record) { return record.role == p21::Role::Entity; }));
    return count;
}

bool isComplaint(std::string_view text)
{
    return text.starts_with("Undefined Parsing");
}

bool hasComplaints(const Interface_InterfaceModel& model)
{
    const Handle(Interface_Check) check = model.GlobalCheck();
    for (int i = 1; !check.IsNull() && i <= check->NbFails(); ++i)
        if (isComplaint(check->CFail(i)))
            return true;
    return false;
}

} // namespace

Standard_Integer RecordLibrary::ReadFile(Standard_CString name, Handle(Interface_InterfaceModel) & model,
                                         const Handle(Interface_Protocol) & protocol) const
{
    const readers::TextFile file(name);
    m_losses.clear();
    if (file.text().empty())
        return -1;
    const p21::Records records = p21::scan(file.text(), core::threadCount(m_job.settings));
    m_job.progress.report(ScanShare);
    const p21::EntityIndex index(records);
    if (m_job.settings.isOn(core::Setting::Pmi))
        m_annotations = annotations::readAnnotations(records, index);
    m_facets = facets::readParts(records, index);
    const std::vector<std::string> complaints = complaintsOf(file.text(), records, index);
    if (!complaints.empty())
        return readDamaged(name, file.text(), records, index, complaints, model, protocol);
    load(records, index, model, protocol);
    return 0;
}

std::set<std::uint32_t> RecordLibrary::productsBeside() const
{
    std::set<std::uint32_t> products;
    for (const annotations::Callout& callout : m_annotations.callouts)
        products.insert(callout.product);
    for (const facets::Part& part : m_facets.parts)
        products.insert(part.product);
    products.erase(0);
    return products;
}

Standard_Integer RecordLibrary::readDamaged(Standard_CString name, std::string_view text, const p21::Records& records,
                                            const p21::EntityIndex& index, const std::vector<std::string>& complaints,
                                            Handle(Interface_InterfaceModel) & model,
                                            const Handle(Interface_Protocol) & protocol) const
{
    const Standard_Integer status = readByParser(name, text, model, protocol);
    const bool isParsed = status == 0 && !model.IsNull();
    if (isParsed && !hasComplaints(*model)) {
        m_job.log.info("the text was read by OCCT's own parser, because " + complaints.front());
        return status;
    }
    const std::size_t count = entityCount(records);
    const std::size_t parsed = isParsed ? static_cast<std::size_t>(model->NbEntities()) : 0;
    if (std::max(count, parsed) == 0)
        return 1;
    m_losses = complaints;
    // OCCT keeps what it can of a record with one parameter that cannot be read.
    if (parsed <= count)
        load(records, index, model, protocol);
    return 0;
}

Standard_Integer RecordLibrary::readByParser(Standard_CString name, std::string_view text,
                                             Handle(Interface_InterfaceModel) & model,
                                             const Handle(Interface_Protocol) & protocol) const
{
    CountingBuffer buffer(text, ParserShare, m_job.progress);
    std::istream stream(&buffer);
    return ReadStream(name, stream, model, protocol);
}

void RecordLibrary::load(const p21::Records& records, const p21::EntityIndex& index,
                         Handle(Interface_InterfaceModel) & model, const Handle(Interface_Protocol) & protocol) const
{
    const auto stepProtocol = Handle(StepData_Protocol)::DownCast(protocol);
    const Handle(StepData_StepModel) stepModel = new StepData_StepModel;
    const RecordTables tables(records, index, stepProtocol, stepModel->SourceCodePage());
    m_job.progress.report(TablesShare);
    RecordTool tool(tables.data(), stepProtocol, m_job.progress, TablesShare);
    tool.load(stepModel);
    model = stepModel;
}

} // namespace ptx::step
