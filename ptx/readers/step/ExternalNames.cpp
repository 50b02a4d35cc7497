#include "ptx/readers/step/ExternalNames.h"

#include "ptx/occt/OcctText.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_ExternRefs.hxx>
#include <STEPControl_Reader.hxx>
#include <StepAP214_AppliedExternalIdentificationAssignment.hxx>
#include <StepAP214_ExternalIdentificationItem.hxx>
#include <StepAP214_HArray1OfExternalIdentificationItem.hxx>
#include <StepBasic_Document.hxx>
#include <StepBasic_DocumentFile.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <TColStd_SequenceOfHAsciiString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_ChildIterator.hxx>
#include <TDF_Label.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_WorkSession.hxx>

#include <charconv>
#include <unordered_map>

namespace ptx::step
{

namespace
{

constexpr std::string_view MarkPrefix = "part-file-";
constexpr char Nowhere[] = "/nonexistent/assembly.stp";

Handle(TCollection_HAsciiString) markOf(std::size_t number)
{
    return new TCollection_HAsciiString((std::string(MarkPrefix) + std::to_string(number)).c_str());
}

/// Replaces the names of documents by marks.
class Marker
{
public:
    std::vector<std::vector<std::string>> mark(const Handle(Interface_InterfaceModel) & model)
    {
        for (int i = 1; i <= model->NbEntities(); ++i)
            markIdentification(model->Value(i));
        for (int i = 1; i <= model->NbEntities(); ++i)
            if (const auto document = Handle(StepBasic_Document)::DownCast(model->Value(i)); !document.IsNull())
                markDocument(*document);
        return std::move(m_names);
    }

private:
    std::size_t numberOf(const StepBasic_Document& document)
    {
        const auto [entry, isNew] = m_numbers.try_emplace(&document, m_names.size());
        if (isNew)
            m_names.emplace_back();
        return entry->second;
    }

    void addName(std::size_t number, const Handle(TCollection_HAsciiString) & text)
    {
        if (std::string name = occt::utf8(text); !name.empty())
            m_names[number].push_back(std::move(name));
    }

    void markIdentification(const Handle(Standard_Transient) & entity)
    {
        const auto assignment = Handle(StepAP214_AppliedExternalIdentificationAssignment)::DownCast(entity);
        if (assignment.IsNull() || assignment->Items().IsNull())
            return;
        for (const StepAP214_ExternalIdentificationItem& item : assignment->Items()->Array1())
            if (const Handle(StepBasic_DocumentFile) document = item.DocumentFile(); !document.IsNull()) {
                const std::size_t number = numberOf(*document);
                addName(number, assignment->AssignedId());
                assignment->SetAssignedId(markOf(number));
                return;
            }
    }

    void markDocument(StepBasic_Document& document)
    {
        const std::size_t number = numberOf(document);
        addName(number, document.Id());
        addName(number, document.Name());
        document.SetId(markOf(number));
        document.SetName(markOf(number));
    }

    std::vector<std::vector<std::string>> m_names;
    std::unordered_map<const StepBasic_Document*, std::size_t> m_numbers;
};

bool hasReferences(const Handle(XSControl_WorkSession) & session)
{
    STEPConstruct_ExternRefs references(session);
    references.LoadExternRefs();
    for (int i = 1; i <= references.NbExternRefs(); ++i) {
        const char* name = references.FileName(i);
        if (name && *name && !references.ProdDef(i).IsNull())
            return true;
    }
    return false;
}

} // namespace

bool ExternalNames::isMark(std::string_view text)
{
    return text.starts_with(MarkPrefix);
}

ExternalNames::ExternalNames(STEPCAFControl_Reader& reader)
{
    const Handle(XSControl_WorkSession) session = reader.Reader().WS();
    m_names = Marker().mark(session->Model());
    session->SetLoadedFile(Nowhere);
    m_hasReferences = hasReferences(session);
}

std::vector<std::string> ExternalNames::of(const TDF_Label& label) const
{
    std::vector<std::string> names;
    for (TDF_ChildIterator child(label); child.More(); child.Next()) {
        if (!XCAFDoc_ShapeTool::IsExternRef(child.Value()))
            continue;
        TColStd_SequenceOfHAsciiString marks;
        XCAFDoc_ShapeTool::GetExternRefs(child.Value(), marks);
        for (const Handle(TCollection_HAsciiString) & mark : marks) {
            const std::string text = occt::utf8(mark);
            std::size_t number = 0;
            if (!text.starts_with(MarkPrefix))
                continue;
            std::from_chars(text.data() + MarkPrefix.size(), text.data() + text.size(), number);
            if (number < m_names.size())
                names.insert(names.end(), m_names[number].begin(), m_names[number].end());
        }
    }
    return names;
}

bool ExternalNames::isAboutMark(std::string_view complaint)
{
    return complaint.find(MarkPrefix) != std::string_view::npos;
}

} // namespace ptx::step
