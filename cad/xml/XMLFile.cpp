#include "cad/xml/XMLFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
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

/// The bytes of a file, with a NUL behind them.
struct Text {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
};

// Opening a pipe would wait for a writer, and a folder opens but has no sensible size.
File openRegularFile(const std::string& name)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(name, error))
        return nullptr;
    return File(std::fopen(name.c_str(), "rb"));
}

/// No bytes if the file cannot be read.
Text readFile(const std::string& name)
{
    const auto file = openRegularFile(name);
    if (!file || std::fseek(file.get(), 0, SEEK_END) != 0)
        return {};
    const auto length = std::ftell(file.get());
    std::rewind(file.get());
    if (length < 0)
        return {};
    Text text{nullptr, static_cast<std::size_t>(length)};
    text.bytes = std::make_unique_for_overwrite<char[]>(text.size + 1);
    text.bytes[text.size] = '\0';
    if (std::fread(text.bytes.get(), 1, text.size, file.get()) != text.size)
        return {};
    return text;
}

/// Makes one line feed of every carriage return and the line feed behind it, as XML asks for.
void normalizeLineEnds(Text& text)
{
    const char* const end = text.bytes.get() + text.size;
    char* out = std::find(text.bytes.get(), text.bytes.get() + text.size, '\r');
    for (const char* in = out; in != end; ++in) {
        const auto isReturn = *in == '\r';
        const auto isPair = isReturn && in[1] == '\n';
        *out++ = isReturn ? '\n' : *in;
        in += isPair;
    }
    *out = '\0';
}

CADPlace placeOf(const Text& text, std::size_t position)
{
    const std::string_view before(text.bytes.get(), std::min(position, text.size));
    const auto lineStart = before.rfind('\n') + 1; // 0 without one
    return {static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1,
            static_cast<int>(before.size() - lineStart) + 1};
}

/// The parser counts from 1 as well, but an empty text has no place.
CADFault faultOf(const TiXmlDocument& xml)
{
    return {CADFault::Cause::Syntax, {std::max(xml.ErrorRow(), 1), std::max(xml.ErrorCol(), 1)}, {}, xml.ErrorDesc()};
}

} // namespace

std::optional<CADFault> loadXMLFile(TiXmlDocument& xml, const XMLLimits& limits, bool keepsPlaces)
{
    // The parser could read the file itself, but then it might read other bytes than those that were looked at.
    auto text = readFile(xml.ValueStr());
    if (!text.bytes)
        return CADFault{};
    if (const auto verdict = scanXMLText({text.bytes.get(), text.size}, limits); verdict.fault != XMLFault::None)
        return CADFault{CADFault::Cause::Text, placeOf(text, verdict.position), verdict.fault};
    normalizeLineEnds(text);
    if (!keepsPlaces)
        xml.SetTabSize(0);
    xml.Parse(text.bytes.get(), nullptr, TIXML_DEFAULT_ENCODING);
    return xml.Error() ? std::optional(faultOf(xml)) : std::nullopt;
}

} // namespace HB::XML::CAD
