#include "ptx/readers/iges/RescuedReader.h"

#include "ptx/core/TrialRun.h"

#include <IGESBasic_Name.hxx>
#include <IGESData_IGESModel.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

namespace ptx::iges
{

void RescuedReader::mendNames()
{
    const Handle(IGESData_IGESModel) model = IGESModel();
    for (int i = 1; i <= model->NbEntities(); ++i)
        if (const auto name = Handle(IGESBasic_Name)::DownCast(model->Value(i));
            !name.IsNull() && name->Value().IsNull())
            name->Init(1, new TCollection_HAsciiString(""));
}

std::vector<std::string> RescuedReader::leaveOutCrashing(core::Progress& progress)
{
    std::vector<std::string> sentences;
    const Handle(XSControl_TransferReader) transfer = WS()->TransferReader();
    const auto count = static_cast<std::size_t>(NbRootsForTransfer());
    if (count == 0 || !transfer->BeginTransfer())
        return sentences;
    const auto translate = [&](std::size_t i) { transfer->TransferOne(theroots.Value(static_cast<int>(i) + 1)); };
    const std::vector<std::size_t> crashes = core::crashesOf(count, translate, progress);
    for (auto crash = crashes.rbegin(); crash != crashes.rend(); ++crash) {
        const int number = static_cast<int>(*crash) + 1;
        const auto entity = Handle(IGESData_IGESEntity)::DownCast(theroots.Value(number));
        std::string& sentence = sentences.emplace_back("D");
        sentence += std::to_string(IGESModel()->DNum(entity)) + " of type " + std::to_string(entity->TypeNumber());
        sentence += ": the CAD kernel crashes on it";
        theroots.Remove(number);
    }
    return {sentences.rbegin(), sentences.rend()};
}

} // namespace ptx::iges
