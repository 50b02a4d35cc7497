#include "tests/house/BuildLists.h"

#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace house
{

namespace
{

using Names = std::set<std::string>;

// The text of a line without its comment.
std::string code(const std::string& line)
{
    return line.substr(0, line.find('#'));
}

Names compiledBy(const fs::path& list, const std::string& path, std::vector<Finding>& stray)
{
    static const std::regex source(R"re(([^\s()"]+)\.cpp\b)re");
    Names names;
    std::ifstream input(list);
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        const std::string text = code(line);
        for (auto word = std::sregex_iterator(text.begin(), text.end(), source); word != std::sregex_iterator();
             ++word) {
            const std::string name = (*word)[1].str() + ".cpp";
            const bool isMade = name.find("_BINARY_DIR}") != name.npos || name.starts_with("${generated}");
            if (name.find('/') == name.npos)
                names.insert(name);
            else if (!isMade)
                stray.push_back({path, number, name});
        }
    }
    return names;
}

const Names& namesOf(const fs::path& root, const std::string& folder, std::map<std::string, Names>& known,
                     std::vector<Finding>& stray)
{
    const auto [place, isNew] = known.try_emplace(folder);
    const std::string path = folder + "/CMakeLists.txt";
    if (isNew)
        place->second = compiledBy(root / path, path, stray);
    return place->second;
}

} // namespace

std::vector<Finding> strayBuildEntries(const fs::path& root, const std::vector<SourceFile>& files)
{
    std::vector<Finding> stray;
    std::map<std::string, Names> known;
    for (const SourceFile& file : files) {
        const Names& names = namesOf(root, folderOf(file.path), known, stray);
        const bool isUnlisted = file.path.ends_with(".cpp") && !names.contains(stemOf(file.path) + ".cpp");
        if (isProduct(file.path) && isUnlisted)
            stray.push_back({file.path, 0, "is not in the list of its folder"});
    }
    return stray;
}

} // namespace house
