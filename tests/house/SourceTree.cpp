#include "tests/house/SourceTree.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <ostream>
#include <set>

namespace fs = std::filesystem;

namespace house
{

namespace
{

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

std::string resolve(const fs::path& root, const std::string& file, const std::string& included)
{
    const fs::path beside = (fs::path(file).parent_path() / included).lexically_normal();
    return fs::is_regular_file(root / beside) ? beside.generic_string()
                                              : fs::path(included).lexically_normal().generic_string();
}

// All bytes of UTF-8 but those that continue a letter.
std::size_t columnsOf(std::string_view line)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(line, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

SourceFile readSource(const fs::path& root, std::string path)
{
    SourceFile file{std::move(path), {}, {}, false};
    std::ifstream input(root / file.path);
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        if (const auto written = includedBy(line))
            file.includes.push_back({number, resolve(root, file.path, *written)});
        if (columnsOf(line) > widestLine)
            file.wideLines.push_back(number);
        file.hasMain = file.hasMain || line.starts_with("int main(");
    }
    return file;
}

bool isSource(const fs::path& path)
{
    static const std::set<std::string> suffixes{".h", ".hpp", ".inl", ".cpp"};
    return suffixes.contains(path.extension().string());
}

void collect(const fs::path& root, const std::string& folder, std::vector<std::string>& files)
{
    if (!fs::is_directory(root / folder))
        return;
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
        if (entry.is_regular_file() && isSource(entry.path()))
            files.push_back(entry.path().lexically_relative(root).generic_string());
    }
}

} // namespace

void PrintTo(const Finding& finding, std::ostream* output)
{
    *output << finding.file << ':' << finding.line << ' ' << finding.what;
}

std::string folderOf(std::string_view path)
{
    return std::string(path.substr(0, path.rfind('/') == path.npos ? 0 : path.rfind('/')));
}

std::string stemOf(std::string_view path)
{
    return fs::path(path).stem().string();
}

bool isBelow(std::string_view folder, std::string_view path)
{
    return path.starts_with(folder) && path.size() > folder.size() && path[folder.size()] == '/';
}

const std::vector<std::string>& ownFolders()
{
    static const std::vector<std::string> folders{"bench",        "cad",        "converter", "examples", "files",
                                                  "geometry",     "host",       "import",    "importer", "loader",
                                                  "optimization", "plmxml",     "protocol",  "ptx",      "render",
                                                  "scene",        "standalone", "tests",     "tools"};
    return folders;
}

bool isProduct(std::string_view path)
{
    return !isBelow("tests", path) && !isBelow("bench", path) && !isBelow("examples", path);
}

std::vector<SourceFile> readSourceTree(const fs::path& root)
{
    std::vector<std::string> paths;
    for (const std::string& folder : ownFolders())
        collect(root, folder, paths);
    std::ranges::sort(paths);
    std::vector<SourceFile> files;
    for (std::string& path : paths)
        files.push_back(readSource(root, std::move(path)));
    return files;
}

} // namespace house
