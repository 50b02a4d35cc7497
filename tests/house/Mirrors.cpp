#include "tests/house/Mirrors.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

namespace house
{

namespace
{

using Names = std::set<std::string>;

// Sources that have no header for a reason.
const Names& knownLoners()
{
    static const Names loners{};
    return loners;
}

// Folders of tests that mirror none of the sources.
bool mirrorsNothing(std::string_view path)
{
    static const std::vector<std::string> folders{"tests/roads",          "tests/house",       "tests/support",
                                                  "tests/fuzz",           "tests/package",     "tests/external-host",
                                                  "tests/gltf-validator", "tests/clients",     "tests/cluster",
                                                  "tests/docs",           "tests/translations"};
    return std::ranges::any_of(folders, [path](const std::string& folder) { return isBelow(folder, path); });
}

// Classes of the contract that a folder of the open host defines: those of the module of its name. The scene defines
// those of several modules.
bool definesContractOf(const std::string& folder, const std::string& contractFolder)
{
    static const Names scene{"host/OSGSystem", "host/znOpenSGExt", "host/znOpenSGUberCamera",
                             "host/znOpenSGUberMaterial", "host/znOpenSGUtils"};
    if (folder == "scene")
        return scene.contains(contractFolder);
    return isBelow("standalone", folder) && "host" + folder.substr(std::string("standalone").size()) == contractFolder;
}

std::map<std::string, Names> stemsByFolder(const std::vector<SourceFile>& files, std::string_view suffix)
{
    std::map<std::string, Names> stems;
    for (const SourceFile& file : files) {
        if (file.path.ends_with(suffix))
            stems[folderOf(file.path)].insert(stemOf(file.path));
    }
    return stems;
}

// The names of units that lie in a folder or that it defines of the contract.
Names unitsOf(const std::string& folder, const std::map<std::string, Names>& headers)
{
    Names units;
    for (const auto& [place, names] : headers) {
        if (place == folder || definesContractOf(folder, place))
            units.insert(names.begin(), names.end());
    }
    return units;
}

// A unit's name, and behind it nothing or an aspect.
bool bearsNameOf(const std::string& test, const std::string& unit)
{
    return test.starts_with(unit) && (test.size() == unit.size() || std::isupper(test[unit.size()]) != 0);
}

} // namespace

std::vector<Finding> sourcesWithoutHeader(const std::vector<SourceFile>& files)
{
    const auto headers = stemsByFolder(files, ".h");
    std::vector<Finding> alone;
    for (const SourceFile& file : files) {
        if (!isProduct(file.path) || !file.path.ends_with(".cpp") || file.hasMain || knownLoners().contains(file.path))
            continue;
        if (!unitsOf(folderOf(file.path), headers).contains(stemOf(file.path)))
            alone.push_back({file.path, 0, "has no header of its name"});
    }
    return alone;
}

std::vector<Finding> testsWithoutUnit(const std::vector<SourceFile>& files)
{
    const auto headers = stemsByFolder(files, ".h");
    std::vector<Finding> alone;
    for (const SourceFile& file : files) {
        if (!isBelow("tests", file.path) || !file.path.ends_with("Test.cpp") || mirrorsNothing(file.path))
            continue;
        const std::string folder = folderOf(file.path).substr(std::string("tests/").size());
        const std::string name = stemOf(file.path).substr(0, stemOf(file.path).size() - std::string("Test").size());
        const Names units = unitsOf(folder, headers);
        if (std::ranges::none_of(units, [&](const std::string& unit) { return bearsNameOf(name, unit); }))
            alone.push_back({file.path, 0, "tests no unit of " + folder});
    }
    return alone;
}

} // namespace house
