#include "tests/house/LayerScanner.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <set>
#include <string_view>

namespace fs = std::filesystem;

namespace house
{
namespace
{

using Folders = std::vector<std::string_view>;

enum class Foreign { Any, Portable, StandardAndTinyXml };

struct Layer {
    std::string_view place; // a folder, or the stem of a file
    Folders mayInclude;
    Foreign foreign = Foreign::Any;
};

constexpr std::string_view vocabulary = "import/filetypes/znCADFileTypes";
constexpr std::string_view platform = "import/Platform"; // the one place of the library for systems that differ

const Folders& ownFolders()
{
    static const Folders folders{"bench",  "cad",          "converter", "examples", "host",       "import", "importer",
                                 "loader", "optimization", "plmxml",    "protocol", "standalone", "tests",  "tools"};
    return folders;
}

// The first row whose place holds a file is the one for it.
const std::vector<Layer>& layers()
{
    static const Folders library{"host", "protocol", "import", "converter", "loader", "optimization", "cad", "plmxml"};
    static const Folders product{"host", "protocol", "import",     "converter", "loader", "optimization",
                                 "cad",  "plmxml",   "standalone", "importer",  "tools"};
    static const std::vector<Layer> rows{
        {vocabulary, {vocabulary}, Foreign::Portable},
        {platform, library},
        {"host", {"host", vocabulary}, Foreign::Portable},
        {"protocol", {"protocol", vocabulary}, Foreign::StandardAndTinyXml},
        {"standalone", {"standalone", "host", "protocol", vocabulary}},
        {"cad/xml", {"cad/xml"}, Foreign::StandardAndTinyXml},
        {"import", library, Foreign::Portable},
        {"converter", library, Foreign::Portable},
        {"loader", library, Foreign::Portable},
        {"optimization", library, Foreign::Portable},
        {"cad", library, Foreign::Portable},
        {"plmxml", library, Foreign::Portable},
        {"tools/ptxconvert/tessellation",
         {"tools/ptxconvert", "host", vocabulary, "standalone/OSGSystem", "standalone/scenefile",
          "standalone/geometry"}},
        {"tools/ptxconvert",
         {"tools/ptxconvert", "host", "protocol", vocabulary, "standalone/OSGSystem", "standalone/znOpenSGExt",
          "standalone/scenefile", "standalone/formats/OutputFile"}},
        {"importer", product},
        {"tools", product},
        {"examples", product},
    };
    return rows;
}

// A folder holds what lies below it; the stem of a file holds its header and its source.
bool holds(std::string_view place, std::string_view file)
{
    return file.starts_with(place) && file.size() > place.size() &&
           (file[place.size()] == '/' || file[place.size()] == '.');
}

bool heldByAny(const Folders& places, std::string_view file)
{
    return std::ranges::any_of(places, [file](std::string_view place) { return holds(place, file); });
}

const Layer* layerOf(std::string_view file)
{
    const auto row = std::ranges::find_if(layers(), [file](const Layer& layer) { return holds(layer.place, file); });
    return row == layers().end() ? nullptr : &*row;
}

// Standard headers are all lower case and have no suffix.
bool isStandardOrTinyXml(std::string_view included)
{
    return included == "tinyxml.h" ||
           included.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") == std::string_view::npos;
}

// What is there on every system: Qt's headers of classes, Boost, and the above.
bool isPortable(std::string_view included)
{
    const bool isQt = included.starts_with('Q') && included.find('.') == std::string_view::npos;
    return isQt || included.starts_with("boost/") || isStandardOrTinyXml(included);
}

bool isAllowedForeign(Foreign foreign, std::string_view included)
{
    switch (foreign) {
    case Foreign::Portable:
        return isPortable(included);
    case Foreign::StandardAndTinyXml:
        return isStandardOrTinyXml(included);
    case Foreign::Any:
        break;
    }
    return true;
}

bool isAllowed(const Layer& layer, const std::string& included)
{
    if (heldByAny(ownFolders(), included))
        return heldByAny(layer.mayInclude, included);
    return isAllowedForeign(layer.foreign, included);
}

std::string resolve(const fs::path& root, const std::string& file, const std::string& included)
{
    const fs::path beside = (fs::path(file).parent_path() / included).lexically_normal();
    return fs::is_regular_file(root / beside) ? beside.generic_string()
                                              : fs::path(included).lexically_normal().generic_string();
}

// Takes a word, and the blanks before it, off the front of a text.
bool take(std::string_view& text, std::string_view word)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (!text.starts_with(word))
        return false;
    text.remove_prefix(word.size());
    return true;
}

std::optional<std::string> includedBy(std::string_view line)
{
    if (!take(line, "#") || !take(line, "include") || !(take(line, "\"") || take(line, "<")))
        return std::nullopt;
    return std::string(line.substr(0, line.find_first_of("\">")));
}

void scanFile(const fs::path& root, const std::string& file, std::vector<BrokenLayer>& broken)
{
    const Layer* layer = layerOf(file);
    std::ifstream input(root / file);
    std::string line;
    for (int number = 1; layer && std::getline(input, line); ++number) {
        const auto written = includedBy(line);
        if (!written)
            continue;
        const std::string included = resolve(root, file, *written);
        if (!isAllowed(*layer, included))
            broken.push_back({file, number, included});
    }
}

bool isSource(const fs::path& path)
{
    static const std::set<std::string> suffixes{".h", ".hpp", ".inl", ".cpp"};
    return suffixes.contains(path.extension().string());
}

void collect(const fs::path& root, std::string_view folder, std::vector<std::string>& files)
{
    if (!fs::is_directory(root / folder))
        return;
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
        if (entry.is_regular_file() && isSource(entry.path()))
            files.push_back(entry.path().lexically_relative(root).generic_string());
    }
}

} // namespace

LayerReport scanLayers(const fs::path& root)
{
    LayerReport report;
    for (const std::string_view folder : ownFolders())
        collect(root, folder, report.files);
    std::ranges::sort(report.files);
    for (const std::string& file : report.files)
        scanFile(root, file, report.broken);
    return report;
}

} // namespace house
