#include "protocol/Formats.h"

#include "import/filetypes/znCADFileTypes.h"

#include <algorithm>
#include <string>

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

} // namespace

bool isConverted(std::string_view extension)
{
    return isOfCadFormat(std::string(extension)) || isRead(extension);
}

bool mayNamePartFiles(std::string_view extension)
{
    return znCADFileTypes::assemblyExtensions().contains(std::string(extension));
}

} // namespace protocol
