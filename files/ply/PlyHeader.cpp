#include "files/ply/PlyHeader.h"

#include <charconv>
#include <limits>
#include <map>

namespace files::ply
{

namespace
{

constexpr std::uint64_t maxHeaderLines = 10'000;
constexpr std::string_view blanks = " \t\r";

/// Takes the next word off `line`; empty at its end.
std::string_view takeWord(std::string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

std::optional<PlyType> typeOf(std::string_view word)
{
    static const std::map<std::string_view, PlyType> types = {
        {"char", PlyType::Int8},     {"int8", PlyType::Int8},     {"uchar", PlyType::Uint8},
        {"uint8", PlyType::Uint8},   {"short", PlyType::Int16},   {"int16", PlyType::Int16},
        {"ushort", PlyType::Uint16}, {"uint16", PlyType::Uint16}, {"int", PlyType::Int32},
        {"int32", PlyType::Int32},   {"uint", PlyType::Uint32},   {"uint32", PlyType::Uint32},
        {"float", PlyType::Float},   {"float32", PlyType::Float}, {"double", PlyType::Double},
        {"float64", PlyType::Double}};
    const auto found = types.find(word);
    return found == types.end() ? std::nullopt : std::optional(found->second);
}

class HeaderReader
{
public:
    HeaderReader(std::string_view file, const ReadTask& task) : m_file(file), m_task(task) {}

    PlyHeader read();

private:
    std::string_view takeLine();
    void statement(std::string_view line);
    void format(std::string_view line);
    void element(std::string_view line);
    void property(std::string_view line);
    void comment(std::string_view line);
    PlyType takeType(std::string_view& line);
    [[noreturn]] void fail(const QString& message) const
    {
        m_task.fail(ErrorCode::Damaged, message, linePlace(m_header.lines));
    }

    std::string_view m_file;
    const ReadTask& m_task;
    PlyHeader m_header;
    bool m_hasFormat = false;
};

PlyHeader HeaderReader::read()
{
    std::string_view line = takeLine();
    if (takeWord(line) != "ply")
        fail(tr("this is no PLY file"));
    for (line = takeLine(); line != "end_header"; line = takeLine())
        statement(line);
    if (!m_hasFormat)
        fail(tr("the header does not tell the format"));
    return std::move(m_header);
}

std::string_view HeaderReader::takeLine()
{
    const std::size_t end = m_file.find('\n', m_header.size);
    ++m_header.lines;
    if (end == std::string_view::npos || m_header.lines > maxHeaderLines)
        fail(tr("the header does not end"));
    std::string_view line = m_file.substr(m_header.size, end - m_header.size);
    m_header.size = end + 1;
    return line.substr(0, line.find_last_not_of(blanks) + 1);
}

void HeaderReader::statement(std::string_view line)
{
    const std::string_view keyword = takeWord(line);
    if (keyword == "format")
        format(line);
    else if (keyword == "element")
        element(line);
    else if (keyword == "property")
        property(line);
    else if (keyword == "comment")
        comment(line);
    else if (keyword != "obj_info" && !keyword.empty())
        fail(tr("'%1' is not known")
                 .arg(QString::fromUtf8(keyword.data(), int(std::min<std::size_t>(keyword.size(), 40)))));
}

void HeaderReader::format(std::string_view line)
{
    static const std::map<std::string_view, PlyFormat> formats = {{"ascii", PlyFormat::Text},
                                                                  {"binary_little_endian", PlyFormat::LittleEndian},
                                                                  {"binary_big_endian", PlyFormat::BigEndian}};
    const auto found = formats.find(takeWord(line));
    if (found == formats.end())
        fail(tr("the format is not known"));
    m_header.format = found->second;
    m_hasFormat = true;
}

void HeaderReader::element(std::string_view line)
{
    PlyElement result;
    result.name = takeWord(line);
    const std::string_view count = takeWord(line);
    const auto [end, error] = std::from_chars(count.data(), count.data() + count.size(), result.count);
    if (result.name.empty() || error != std::errc() || end != count.data() + count.size())
        fail(tr("an element needs a name and a number"));
    m_header.elements.push_back(std::move(result));
}

PlyType HeaderReader::takeType(std::string_view& line)
{
    if (const std::optional<PlyType> type = typeOf(takeWord(line)))
        return *type;
    fail(tr("the type of a property is not known"));
}

void HeaderReader::property(std::string_view line)
{
    if (m_header.elements.empty())
        fail(tr("a property stands before the first element"));
    PlyProperty result;
    std::string_view rest = line;
    if (takeWord(rest) == "list") {
        line = rest;
        result.countType = takeType(line);
        if (*result.countType == PlyType::Float || *result.countType == PlyType::Double)
            fail(tr("the length of a list is not an integer"));
    }
    result.type = takeType(line);
    result.name = takeWord(line);
    m_header.elements.back().properties.push_back(std::move(result));
}

void HeaderReader::comment(std::string_view line)
{
    if (takeWord(line) != "TextureFile")
        return;
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    if (!line.empty())
        m_header.textures.push_back(QString::fromUtf8(line.data(), int(line.size())));
}

} // namespace

std::size_t plyTypeSize(PlyType type)
{
    switch (type) {
    case PlyType::Int8:
    case PlyType::Uint8:
        return 1;
    case PlyType::Int16:
    case PlyType::Uint16:
        return 2;
    case PlyType::Double:
        return 8;
    default:
        return 4;
    }
}

double plyTypeOne(PlyType type)
{
    switch (type) {
    case PlyType::Int8:
        return std::numeric_limits<std::int8_t>::max();
    case PlyType::Uint8:
        return std::numeric_limits<std::uint8_t>::max();
    case PlyType::Int16:
        return std::numeric_limits<std::int16_t>::max();
    case PlyType::Uint16:
        return std::numeric_limits<std::uint16_t>::max();
    case PlyType::Int32:
        return std::numeric_limits<std::int32_t>::max();
    case PlyType::Uint32:
        return std::numeric_limits<std::uint32_t>::max();
    default:
        return 1;
    }
}

PlyHeader readPlyHeader(std::string_view file, const ReadTask& task)
{
    return HeaderReader(file, task).read();
}

} // namespace files::ply
