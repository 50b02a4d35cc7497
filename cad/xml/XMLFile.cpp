#include "cad/xml/XMLFile.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include <tinyxml.h>

namespace HB::XML::CAD
{

namespace
{

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Opening a pipe would wait for a writer, and a folder opens but has no sensible size.
File openRegularFile(const std::string& name)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(name, error))
        return nullptr;
    return File(std::fopen(name.c_str(), "rb"));
}

bool passesScan(std::FILE* file, const XMLLimits& limits)
{
    std::fseek(file, 0, SEEK_END);
    const auto length = std::ftell(file);
    std::rewind(file);
    if (length <= 0)
        return false;
    const auto size = static_cast<std::size_t>(length);
    const auto text = std::make_unique_for_overwrite<char[]>(size);
    return std::fread(text.get(), 1, size, file) == size &&
           scanXMLText({text.get(), size}, limits).fault == XMLFault::None;
}

} // namespace

bool loadXMLFile(TiXmlDocument& xml, const XMLLimits& limits)
{
    const auto file = openRegularFile(xml.ValueTStr());
    if (!file || !passesScan(file.get(), limits))
        return false;
    xml.SetTabSize(0); // nobody asks for rows and columns, whose tracking costs a quarter of the time
    return xml.LoadFile(file.get());
}

} // namespace HB::XML::CAD
