#include "tools/ptxconvert/series/SeriesPlan.h"

#include <filesystem>
#include <map>
#include <set>

namespace ptxconvert
{

namespace
{

using std::filesystem::path;

ptx::core::Failure wrongUse(const std::string& message)
{
    return {ptx::core::ExitCode::WrongUse, message};
}

} // namespace

ptx::core::Outcome<std::vector<SeriesItem>> planSeries(const std::vector<std::string>& inputs,
                                                       const std::string& folder)
{
    std::map<std::string, int> uses;
    for (const std::string& input : inputs) {
        ++uses[path(input).stem().string()];
        ++uses[path(input).filename().string()]; // that of "a" may be the stem of "a.stp"
    }
    std::vector<SeriesItem> items;
    std::map<std::string, std::string> inputOf;
    const std::set<std::string> known(inputs.begin(), inputs.end());
    for (const std::string& input : inputs) {
        const std::string stem = path(input).stem().string();
        const std::string name = uses[stem] > 1 ? path(input).filename().string() : stem;
        const std::string output = (path(folder) / (name + ".osb")).string();
        const auto [other, isNew] = inputOf.emplace(output, input);
        if (!isNew)
            return wrongUse(other->second + " and " + input + " would both become " + output);
        if (known.contains(output))
            return wrongUse(input + " would take the place of the input " + output);
        items.push_back({input, output});
    }
    return items;
}

} // namespace ptxconvert
