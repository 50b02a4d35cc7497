#include "tests/house/FolderArrows.h"

#include <algorithm>
#include <sstream>

namespace house
{

namespace
{

using Folders = std::set<std::string>;

const Folders& arrowsFrom(const FolderArrows& arrows, const std::string& folder)
{
    static const Folders none;
    const auto found = arrows.find(folder);
    return found == arrows.end() ? none : found->second;
}

Folders reachedFrom(const FolderArrows& arrows, const std::string& start)
{
    Folders reached;
    std::vector<std::string> next{start};
    while (!next.empty()) {
        const std::string folder = std::move(next.back());
        next.pop_back();
        for (const std::string& other : arrowsFrom(arrows, folder)) {
            if (reached.insert(other).second)
                next.push_back(other);
        }
    }
    return reached;
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(' ');
    return first == text.npos ? std::string() : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void readArrow(const std::string& line, FolderArrows& arrows)
{
    const auto arrow = line.find("->");
    if (arrow == line.npos)
        return;
    Folders& targets = arrows[trimmed(line.substr(0, arrow))];
    std::istringstream names(line.substr(arrow + 2));
    for (std::string name; std::getline(names, name, ',');) {
        if (!trimmed(name).empty())
            targets.insert(trimmed(name));
    }
}

} // namespace

FolderArrows folderArrows(const std::vector<SourceFile>& files)
{
    Folders paths;
    for (const SourceFile& file : files)
        paths.insert(file.path);
    FolderArrows arrows;
    for (const SourceFile& file : files) {
        Folders& targets = arrows[folderOf(file.path)];
        for (const Include& include : file.includes) {
            if (paths.contains(include.included) && folderOf(include.included) != folderOf(file.path))
                targets.insert(folderOf(include.included));
        }
    }
    return arrows;
}

std::vector<std::vector<std::string>> folderRings(const FolderArrows& arrows)
{
    std::map<std::string, Folders> reached;
    for (const auto& [folder, targets] : arrows)
        reached[folder] = reachedFrom(arrows, folder);
    std::set<std::vector<std::string>> rings;
    for (const auto& [folder, others] : reached) {
        if (!others.contains(folder))
            continue;
        std::vector<std::string> ring;
        std::ranges::copy_if(others, std::back_inserter(ring), [&, &from = folder](const std::string& other) {
            return reached.contains(other) && reached.at(other).contains(from);
        });
        rings.insert(ring);
    }
    return {rings.begin(), rings.end()};
}

FolderArrows drawnArrows(const std::string& markdown)
{
    FolderArrows arrows;
    std::istringstream lines(markdown);
    bool within = false;
    for (std::string line; std::getline(lines, line);) {
        if (within && line.starts_with("```"))
            break;
        if (within)
            readArrow(line, arrows);
        within = within || line == "```arrows";
    }
    return arrows;
}

std::string roomOf(std::string folder, const Folders& rooms)
{
    while (!folder.empty() && !rooms.contains(folder))
        folder = folderOf(folder);
    return folder;
}

FolderArrows arrowsBetweenRooms(const FolderArrows& arrows, const std::set<std::string>& rooms)
{
    FolderArrows between;
    for (const auto& [folder, targets] : arrows) {
        const std::string room = roomOf(folder, rooms);
        if (room.empty())
            continue;
        Folders& others = between[room];
        for (const std::string& target : targets) {
            const std::string other = roomOf(target, rooms);
            if (!other.empty() && other != room)
                others.insert(other);
        }
    }
    return between;
}

} // namespace house
