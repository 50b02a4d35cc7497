#pragma once

#include "ptx/occt/OcctSetup.h"
#include "tests/roads/ptxconvert/TempFolder.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPControl_Reader.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <XSControl_WorkSession.hxx>

#include <regex>
#include <string>
#include <vector>

namespace ptxtest
{

/// OCCT's reader with `text` read.
inline void readText(STEPControl_Reader& reader, const std::string& text)
{
    ptx::occt::setUpOcct();
    const TempFolder folder;
    reader.ReadFile(folder.write("a.stp", text).c_str());
}

/// The occurrences of what `reader` has read, in the order of the file.
inline std::vector<Handle(StepRepr_NextAssemblyUsageOccurrence)> usagesOf(const STEPControl_Reader& reader)
{
    std::vector<Handle(StepRepr_NextAssemblyUsageOccurrence)> usages;
    const Handle(Interface_InterfaceModel) model = reader.WS()->Model();
    for (int number = 1; number <= model->NbEntities(); ++number)
        if (const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(model->Value(number));
            !usage.IsNull())
            usages.push_back(usage);
    return usages;
}

/// `text` with what `pattern` finds first replaced.
inline std::string edited(const std::string& text, const std::string& pattern, const std::string& replacement)
{
    return std::regex_replace(text, std::regex(pattern), replacement, std::regex_constants::format_first_only);
}

} // namespace ptxtest
