#include "tests/ptx/readers/step/ReadModel.h"

#include "ptx/occt/OcctSetup.h"
#include "ptx/readers/step/RecordLibrary.h"
#include "tests/roads/ptxconvert/TempFolder.h"

#include <Interface_Check.hxx>
#include <Interface_ReportEntity.hxx>
#include <Interface_UndefinedContent.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepData_WriterLib.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_WorkSession.hxx>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

namespace ptxtest
{

namespace
{

constexpr int LongList = 1000;

void addReport(ReadModel& result, const StepData_StepModel& model, int entity)
{
    const Handle(Interface_Check) check = model.ReportEntity(entity)->Check();
    for (int i = 1; i <= check->NbFails(); ++i)
        result.reports.push_back(std::to_string(entity) + ": " + check->CFail(i));
    for (int i = 1; i <= check->NbWarnings(); ++i)
        result.reports.push_back(std::to_string(entity) + ": " + check->CWarning(i));
}

void addText(std::string& text, StepData_StepWriter& writer)
{
    writer.NewLine(false);
    for (int i = 1; i <= writer.NbLines(); ++i) {
        text += writer.Line(i)->ToCString();
        text += '\n';
    }
}

int longListsOf(const StepData_UndefinedEntity& entity)
{
    const Handle(Interface_UndefinedContent) content = entity.UndefinedContent();
    if (content->NbParams() > LongList)
        return 1;
    int count = entity.Next().IsNull() ? 0 : longListsOf(*entity.Next());
    for (int i = 1; i <= content->NbParams(); ++i) {
        const auto list = content->IsParamEntity(i)
                              ? Handle(StepData_UndefinedEntity)::DownCast(content->ParamEntity(i))
                              : Handle(StepData_UndefinedEntity)();
        count += !list.IsNull() && list->IsSub() ? longListsOf(*list) : 0;
    }
    return count;
}

void addUndefined(std::string& text, const StepData_StepModel& model, const StepData_UndefinedEntity& entity)
{
    const Handle(Interface_UndefinedContent) content = entity.UndefinedContent();
    text += entity.StepType();
    // Long lists of these stay empty where our records are read.
    const int count = content->NbParams() > LongList ? 0 : content->NbParams();
    for (int i = 1; i <= count; ++i) {
        text += ' ' + std::to_string(content->ParamType(i)) + ':';
        if (!content->IsParamEntity(i)) {
            text += content->ParamValue(i).IsNull() ? "" : content->ParamValue(i)->ToCString();
            continue;
        }
        const auto list = Handle(StepData_UndefinedEntity)::DownCast(content->ParamEntity(i));
        if (list.IsNull() || !list->IsSub())
            text += '#' + std::to_string(model.Number(content->ParamEntity(i)));
        else
            addUndefined(text += '(', model, *list);
    }
    text += ")\n";
    if (!entity.Next().IsNull())
        addUndefined(text, model, *entity.Next());
}

void addEntity(std::string& text, const Handle(StepData_StepModel) & model, int number,
               const StepData_WriterLib& library)
{
    const Handle(Standard_Transient) content =
        model->IsRedefinedContent(number) ? model->ReportEntity(number)->Content() : model->Value(number);
    // OCCT's writer hangs on some of these.
    if (const auto undefined = Handle(StepData_UndefinedEntity)::DownCast(content); !undefined.IsNull())
        return addUndefined(text, *model, *undefined);
    StepData_StepWriter writer(model);
    writer.SendEntity(number, library);
    addText(text, writer);
}

std::string textOf(const Handle(StepData_StepModel) & model, const Handle(StepData_Protocol) & protocol)
{
    std::string text;
    StepData_StepWriter header(model);
    header.SendModel(protocol, true);
    addText(text, header);
    const StepData_WriterLib library(protocol);
    for (int i = 1; i <= model->NbEntities(); ++i)
        addEntity(text, model, i, library);
    return text;
}

ReadModel contentOf(STEPControl_Reader& reader)
{
    ReadModel result;
    const auto model = Handle(StepData_StepModel)::DownCast(reader.WS()->Model());
    result.isRead = true;
    const Handle(Interface_Check) check = model->GlobalCheck();
    for (int i = 1; !check.IsNull() && i <= check->NbFails(); ++i)
        result.complaints += std::string_view(check->CFail(i)).starts_with("Undefined Parsing") ? 1 : 0;
    for (int i = 1; i <= model->NbEntities(); ++i) {
        result.numbers.push_back(model->IdentLabel(model->Value(i)));
        const auto undefined = Handle(StepData_UndefinedEntity)::DownCast(model->Value(i));
        result.longLists += undefined.IsNull() ? 0 : longListsOf(*undefined);
        if (model->IsReportEntity(i))
            addReport(result, *model, i);
    }
    result.text = textOf(model, Handle(StepData_Protocol)::DownCast(reader.WS()->Protocol()));
    return result;
}

ReadModel read(const std::string& path, const Handle(IFSelect_WorkLibrary) & library)
{
    ptx::occt::setUpOcct();
    STEPControl_Reader reader;
    if (!library.IsNull())
        reader.WS()->SetLibrary(library);
    std::ifstream stream(path, std::ios::binary);
    const IFSelect_ReturnStatus status =
        library.IsNull() ? reader.ReadStream(path.c_str(), stream) : reader.ReadFile(path.c_str());
    return status == IFSelect_RetDone ? contentOf(reader) : ReadModel();
}

} // namespace

ReadModel readByParser(const std::string& path)
{
    return read(path, {});
}

ReadModel readByRecords(const std::string& path, int threads, std::string* words)
{
    const TempFolder folder;
    const std::string logPath = folder.file("log");
    ptx::core::Settings settings;
    settings.assign("threads=" + std::to_string(threads));
    ptx::core::Limits limits(settings, 0);
    ptx::core::Progress progress;
    ptx::core::Log log(logPath);
    std::error_code missing;
    ptx::core::Rescue rescue(folder.file("parts"), 0);
    const ptx::model::Job job{path,  std::filesystem::file_size(path, missing), false, settings, limits, progress, log,
                              rescue};
    const Handle(ptx::step::RecordLibrary) library = new ptx::step::RecordLibrary(job);
    ReadModel result = read(path, library);
    result.losses = library->losses();
    if (words)
        *words = contentOf(logPath);
    return result;
}

} // namespace ptxtest
