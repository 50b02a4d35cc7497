#include "ptx/readers/jt/codec/Packets.h"

#include "ptx/readers/jt/codec/Arithmetic.h"
#include "ptx/readers/jt/codec/BitLengths.h"
#include "ptx/readers/jt/codec/Huffman.h"

namespace ptx::jt::codec
{

namespace
{

constexpr int Deepest = 12;
constexpr std::size_t FrontWindow = 16;

enum Codec { Plain = 0, BitLength = 1, Huffman = 2, Arithmetic = 3, Chopper = 4, MoveToFront = 5 };

} // namespace

std::size_t PacketReader::spend(std::int32_t count)
{
    if (count < 0 || static_cast<std::size_t>(count) > m_budget) {
        m_cursor.fail("an array has more values than its segment can mean");
        return 0;
    }
    m_budget -= static_cast<std::size_t>(count);
    return static_cast<std::size_t>(count);
}

Values PacketReader::checked(Values values, std::size_t count)
{
    if (m_cursor.isOk() && values.size() != count)
        return failed(m_cursor, "an array has another count than it says");
    return values;
}

Values PacketReader::readMark1(int depth)
{
    const int codec = m_cursor.u8();
    if (depth > Deepest || codec > Arithmetic)
        return failed(m_cursor, "an array has an unknown codec");
    if (codec == Plain) {
        Values values(spend(static_cast<std::int32_t>(m_cursor.count(4))));
        for (std::int32_t& value : values)
            value = m_cursor.i32();
        return values;
    }
    std::vector<CodeTable> tables;
    Values escaped;
    if (codec != BitLength) {
        tables = readTables(m_cursor);
        if (const std::int32_t n = m_cursor.i32(); n > 0)
            escaped = checked(readMark1(depth + 1), static_cast<std::size_t>(n));
    }
    const std::int32_t bits = m_cursor.i32();
    CodeText text;
    text.flip = flip();
    text.count = spend(m_cursor.i32());
    text.symbols = tables.size() == 2 ? spend(m_cursor.i32()) : text.count;
    text.words = m_cursor.take(m_cursor.count(4) * 4);
    if (!m_cursor.isOk() || bits < 0 || static_cast<std::uint64_t>(bits) > text.words.size() * 8)
        return failed(m_cursor, "an array has fewer bits than it says");
    text.bits = static_cast<std::uint64_t>(bits);
    if (codec == BitLength)
        return checked(decodeBitLengths(text, m_cursor), text.count);
    if (bits == 0)
        return escaped.empty() && tables[0].size() == 1
                   ? checked(decodeHuffman(text, tables[0], escaped, m_cursor), text.count)
                   : checked(escaped, text.count);
    if (codec == Huffman)
        return tables.size() == 1 ? checked(decodeHuffman(text, tables[0], escaped, m_cursor), text.count)
                                  : failed(m_cursor, "a Huffman array has two tables");
    return checked(decodeArithmetic(text, tables, escaped, m_cursor), text.count);
}

Values PacketReader::readLater(int depth)
{
    if (depth > Deepest)
        return failed(m_cursor, "arrays are nested too deeply");
    CodeText text;
    text.flip = flip();
    text.count = spend(m_cursor.i32());
    if (text.count == 0)
        return {};
    text.symbols = text.count;
    const int codec = m_cursor.u8();
    if (codec == Chopper)
        return checked(chopped(text.count, depth), text.count);
    if (codec == MoveToFront && m_major >= 10)
        return checked(movedToFront(text.count, depth), text.count);
    if (codec != Plain && codec != BitLength && codec != Arithmetic)
        return failed(m_cursor, "an array has an unknown codec");
    const std::int32_t bits = m_cursor.i32();
    if (bits < 0)
        return failed(m_cursor, "an array has a negative size");
    text.bits = static_cast<std::uint64_t>(bits);
    text.words = m_cursor.take((text.bits + 31) / 32 * 4);
    if (codec == Arithmetic)
        return checked(withTable(text, depth), text.count);
    if (codec == BitLength)
        return checked(decodeBitLengths(text, m_major, m_cursor), text.count);
    if (text.words.size() / 4 < text.count)
        return failed(m_cursor, "an array has fewer bits than its values need");
    container::Cursor words(text.words, m_cursor.isBigEndian());
    Values values(text.count);
    for (std::int32_t& value : values)
        value = words.i32();
    return values;
}

Values PacketReader::withTable(const CodeText& text, int depth)
{
    const std::vector<CodeTable> tables = readTable(m_cursor, m_major);
    if (tables.empty())
        return {};
    bool hasEscape = m_major < 10;
    for (const CodeEntry& entry : tables[0])
        hasEscape = hasEscape || entry.symbol == CodeEntry::Escape;
    const Values escaped = hasEscape ? readLater(depth + 1) : Values();
    if (!m_cursor.isOk())
        return {};
    return text.bits == 0 ? escaped : decodeArithmetic(text, tables, escaped, m_cursor);
}

Values PacketReader::chopped(std::size_t count, int depth)
{
    const unsigned chop = m_cursor.u8();
    if (chop == 0 && m_major < 10)
        return readLater(depth + 1);
    const auto bias = m_cursor.u32();
    const unsigned span = m_cursor.u8();
    if (span < chop || span - chop > 31)
        return failed(m_cursor, "an array is chopped beyond its bits");
    Values high = checked(readLater(depth + 1), count);
    const Values low = checked(readLater(depth + 1), count);
    if (!m_cursor.isOk())
        return {};
    for (std::size_t i = 0; i < count; ++i)
        high[i] = static_cast<std::int32_t>(
            (static_cast<std::uint32_t>(low[i]) | static_cast<std::uint32_t>(high[i]) << (span - chop)) + bias);
    return high;
}

Values PacketReader::movedToFront(std::size_t count, int depth)
{
    const Values fresh = readLater(depth + 1);
    const Values offsets = checked(readLater(depth + 1), count);
    Values window;
    Values values;
    std::size_t next = 0;
    for (const std::int32_t offset : offsets) {
        std::int32_t value = 0;
        if (offset == -1 && next < fresh.size()) {
            value = fresh[next++];
            if (window.size() == FrontWindow)
                window.pop_back();
        } else if (offset >= 0 && static_cast<std::size_t>(offset) < window.size()) {
            value = window[static_cast<std::size_t>(offset)];
            window.erase(window.begin() + offset);
        } else {
            return failed(m_cursor, "an array refers to a value that is not there");
        }
        window.insert(window.begin(), value);
        values.push_back(value);
    }
    return values;
}

} // namespace ptx::jt::codec
