#include "protocol/Formats.h"

#include "import/filetypes/znCADFileTypes.h"

#include <algorithm>
#include <iterator>

namespace protocol
{

namespace
{

bool isOfCadFormat(const std::string& extension)
{
    return std::ranges::any_of(znCADFileTypes::extensionTable(), [&](const auto& entry) {
        return entry.second.cadFormat && entry.second.extensions.contains(extension);
    });
}

bool isRead(std::string_view extension)
{
    return std::ranges::any_of(ReadFormats, [extension](const ReadFormat& format) {
        return std::ranges::find(format.extensions, extension) != format.extensions.end();
    });
}

bool isStep(std::string_view extension)
{
    return std::ranges::find(format::StepExtensions, extension) != std::end(format::StepExtensions);
}

/// What stands behind the last dot of the name, without the folders.
std::string_view suffixOf(std::string_view fileName)
{
    const std::size_t dot = fileName.find_last_of("./");
    return dot == std::string_view::npos || fileName[dot] == '/' ? std::string_view() : fileName.substr(dot + 1);
}

std::string lower(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

} // namespace

std::string extensionOf(std::string_view fileName)
{
    const std::string_view suffix = suffixOf(fileName);
    std::string extension = lower(suffix);
    if (extension == "stpz")
        return format::StepExtensions[0];
    if (extension == "gz" || extension == "zip") {
        std::string inner = lower(suffixOf(fileName.substr(0, fileName.size() - suffix.size() - 1)));
        if (isStep(inner))
            return inner;
    }
    return extension;
}

std::vector<std::string> packedNames(std::string_view fileName)
{
    const std::string_view suffix = suffixOf(fileName);
    if (!isStep(lower(suffix)))
        return {};
    const std::string name(fileName);
    return {name.substr(0, name.size() - suffix.size()) + "stpz", name + ".gz", name + ".zip"};
}

bool isConverted(std::string_view extension)
{
    return isOfCadFormat(std::string(extension)) || isRead(extension);
}

bool mayNamePartFiles(std::string_view extension)
{
    return znCADFileTypes::assemblyExtensions().contains(std::string(extension));
}

} // namespace protocol
