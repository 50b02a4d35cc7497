#include "tools/ptxconvert/readers/jt/Packets.h"

#include "tools/ptxconvert/readers/jt/BitReader.h"

#include <bit>
#include <limits>

namespace ptx::jt
{

namespace
{

constexpr int Deepest = 12;
constexpr std::size_t FrontWindow = 16;
constexpr std::int32_t Escape = -2;

enum Codec { Plain = 0, BitLength = 1, Huffman = 2, Arithmetic = 3, Chopper = 4, MoveToFront = 5 };

} // namespace

Values PacketReader::fail(const char* what)
{
    m_cursor.fail(what);
    return {};
}

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
    return m_cursor.isOk() && values.size() != count ? fail("an array has another count than it says") : values;
}

Values PacketReader::readMark1(int depth)
{
    const int codec = m_cursor.u8();
    if (depth > Deepest || codec > Arithmetic)
        return fail("an array has an unknown codec");
    if (codec == Plain) {
        Values values(spend(static_cast<std::int32_t>(m_cursor.count(4))));
        for (std::int32_t& value : values)
            value = m_cursor.i32();
        return values;
    }
    std::vector<Table> tables;
    Values escaped;
    if (codec != BitLength) {
        tables = tablesMark1();
        if (const std::int32_t n = m_cursor.i32(); n > 0)
            escaped = checked(readMark1(depth + 1), static_cast<std::size_t>(n));
    }
    const std::int32_t bits = m_cursor.i32();
    CodeText text;
    text.count = spend(m_cursor.i32());
    text.symbols = tables.size() == 2 ? spend(m_cursor.i32()) : text.count;
    text.words = m_cursor.take(m_cursor.count(4) * 4);
    if (!m_cursor.isOk() || bits < 0 || static_cast<std::uint64_t>(bits) > text.words.size() * 8)
        return fail("an array has fewer bits than it says");
    text.bits = static_cast<std::uint64_t>(bits);
    if (codec == BitLength)
        return checked(bitLengthMark1(text), text.count);
    if (bits == 0)
        return escaped.empty() && tables[0].size() == 1 ? checked(huffman(text, tables[0], escaped), text.count)
                                                        : checked(escaped, text.count);
    if (codec == Huffman)
        return tables.size() == 1 ? checked(huffman(text, tables[0], escaped), text.count)
                                  : fail("a Huffman array has two tables");
    return checked(arithmetic(text, tables, escaped), text.count);
}

std::vector<PacketReader::Table> PacketReader::tablesMark1()
{
    BitReader bits(m_cursor.rest());
    const std::uint64_t end = m_cursor.left() * 8;
    const unsigned n = bits.u(8);
    unsigned valueBits = 0;
    std::int32_t least = 0;
    std::vector<Table> tables;
    for (unsigned t = 0; t < n && n <= 2; ++t) {
        const std::uint32_t entries = bits.u(32);
        const unsigned symbolBits = bits.u(6);
        const unsigned occurrenceBits = bits.u(6);
        if (t == 0)
            valueBits = bits.u(6);
        const unsigned nextBits = bits.u(6);
        if (t == 0)
            least = bits.s(32);
        const unsigned width = symbolBits + occurrenceBits + (t == 0 ? valueBits : 0) + nextBits;
        if (symbolBits > 32 || occurrenceBits == 0 || occurrenceBits > 32 || valueBits > 32 || nextBits > 32 ||
            bits.isBeyond(end) || entries == 0 || entries > (1u << 20) || entries > (end - bits.position()) / width) {
            m_cursor.fail("the table of an array is damaged");
            return {};
        }
        Table& table = tables.emplace_back();
        for (std::uint32_t i = 0; i < entries; ++i) {
            Entry entry{};
            entry.symbol = static_cast<std::int32_t>(bits.u(symbolBits) - 2u);
            entry.occurrences = bits.u(occurrenceBits);
            if (t == 0)
                entry.value = static_cast<std::int32_t>(bits.u(valueBits) + static_cast<std::uint32_t>(least));
            entry.next = bits.u(nextBits);
            table.push_back(entry);
        }
    }
    if (tables.empty()) {
        m_cursor.fail("an array has no table");
        return {};
    }
    if (tables.size() == 2) {
        std::vector<std::pair<std::int32_t, std::int32_t>> values;
        for (const Entry& entry : tables[0])
            values.emplace_back(entry.symbol, entry.value);
        std::sort(values.begin(), values.end());
        for (Entry& entry : tables[1]) {
            const auto same = std::lower_bound(values.begin(), values.end(),
                                               std::pair(entry.symbol, std::numeric_limits<std::int32_t>::min()));
            if (same != values.end() && same->first == entry.symbol)
                entry.value = same->second;
        }
    }
    m_cursor.take((bits.position() + 7) / 8);
    return tables;
}

Values PacketReader::bitLengthMark1(const CodeText& text)
{
    BitReader bits(text.words, flip());
    Values values;
    int width = 0;
    while (bits.position() < text.bits) {
        if (bits.u(1) == 1) {
            const std::uint32_t up = bits.u(1);
            do {
                width += up ? 2 : -2;
                if (width < 0 || width > 32 || bits.isBeyond(text.bits))
                    return fail("a bit width is out of range");
            } while (bits.u(1) == up);
        }
        if (values.size() == text.count)
            return fail("an array has more values than it says");
        values.push_back(bits.s(static_cast<unsigned>(width)));
    }
    return values;
}

namespace
{

struct TreeNode {
    std::uint64_t weight = 0;
    std::uint32_t first = 0;  ///< on bit 1; the entry itself in a leaf
    std::uint32_t second = 0; ///< on bit 0
    bool isLeaf = true;
};

/// A heap whose order of equal weights decides which codes arise.
class WeightHeap
{
public:
    explicit WeightHeap(const std::vector<TreeNode>& nodes) : m_nodes(nodes) {}

    void push(std::uint32_t node)
    {
        m_heap.push_back(node);
        std::size_t i = m_heap.size() - 1;
        for (; i > 1 && weight(m_heap[i / 2]) > weight(node); i /= 2)
            m_heap[i] = m_heap[i / 2];
        m_heap[i] = node;
    }

    std::uint32_t pop()
    {
        const std::uint32_t top = m_heap[1];
        const std::uint32_t last = m_heap.back();
        m_heap.pop_back();
        const std::size_t n = m_heap.size() - 1;
        if (n == 0)
            return top;
        std::size_t i = 1;
        for (std::size_t c = 2; c <= n; i = c, c *= 2) {
            if (c < n && weight(m_heap[c]) > weight(m_heap[c + 1]))
                ++c;
            if (weight(last) < weight(m_heap[c]))
                break;
            m_heap[i] = m_heap[c];
        }
        m_heap[i] = last;
        return top;
    }

private:
    std::uint64_t weight(std::uint32_t node) const { return m_nodes[node].weight; }

    const std::vector<TreeNode>& m_nodes;
    std::vector<std::uint32_t> m_heap{0};
};

} // namespace

Values PacketReader::huffman(const CodeText& text, const Table& table, const Values& escaped)
{
    std::vector<TreeNode> nodes;
    nodes.reserve(2 * table.size());
    WeightHeap heap(nodes);
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        nodes.push_back({table[i].occurrences, i});
        heap.push(i);
    }
    for (std::size_t i = 1; i < table.size(); ++i) {
        const std::uint32_t a = heap.pop();
        const std::uint32_t b = heap.pop();
        nodes.push_back({nodes[a].weight + nodes[b].weight, a, b, false});
        heap.push(static_cast<std::uint32_t>(nodes.size() - 1));
    }
    BitReader bits(text.words, flip());
    Values values;
    std::size_t nextEscaped = 0;
    while (values.size() < text.count) {
        const TreeNode* node = &nodes.back();
        while (!node->isLeaf)
            node = &nodes[bits.u(1) ? node->first : node->second];
        if (bits.isBeyond(text.bits))
            return fail("an array has fewer bits than its values need");
        const Entry& entry = table[node->first];
        if (entry.symbol != Escape)
            values.push_back(entry.value);
        else if (nextEscaped < escaped.size())
            values.push_back(escaped[nextEscaped++]);
        else
            return fail("an array escapes more often than it has values for");
    }
    return nextEscaped == escaped.size() ? values : fail("an array leaves escaped values over");
}

namespace
{

/// For each number below the sum of occurrences, the entry that it stands for.
struct Slots {
    std::vector<std::uint32_t> entry;
    std::vector<std::uint32_t> start; ///< by entry
};

} // namespace

Values PacketReader::arithmetic(const CodeText& text, const std::vector<Table>& tables, const Values& escaped)
{
    std::vector<Slots> slots(tables.size());
    for (std::size_t t = 0; t < tables.size(); ++t)
        for (std::uint32_t i = 0; i < tables[t].size(); ++i) {
            const std::uint32_t n = tables[t][i].occurrences;
            if (n > 65535 || slots[t].entry.size() + n > 65535)
                return fail("the table of an array is damaged");
            slots[t].start.push_back(static_cast<std::uint32_t>(slots[t].entry.size()));
            slots[t].entry.insert(slots[t].entry.end(), n, i);
        }
    BitReader bits(text.words, flip());
    Values values;
    std::size_t nextEscaped = 0;
    std::uint32_t code = bits.u(16);
    std::uint32_t low = 0;
    std::uint32_t high = 0xFFFF;
    std::size_t t = 0;
    for (std::size_t i = 0; i < text.symbols; ++i) {
        const auto total = static_cast<std::uint32_t>(slots[t].entry.size());
        const std::uint32_t range = high - low + 1;
        const std::uint32_t q = ((code - low + 1) * total - 1) / range;
        if (q >= total)
            return fail("the code of an array stands for nothing");
        const std::uint32_t number = slots[t].entry[q];
        const Entry& entry = tables[t][number];
        const std::uint32_t start = slots[t].start[number];
        high = low + range * (start + entry.occurrences) / total - 1;
        low = low + range * start / total;
        if (low > high)
            return fail("the code of an array stands for nothing");
        for (;;) {
            if (((low ^ high) & 0x8000) != 0) {
                if (!(low & 0x4000) || (high & 0x4000))
                    break;
                code ^= 0x4000;
                low &= 0x3FFF;
                high |= 0x4000;
            }
            low = low << 1 & 0xFFFF;
            high = (high << 1 | 1) & 0xFFFF;
            code = (code << 1 | bits.u(1)) & 0xFFFF;
        }
        // An escape of the second table stands for no value.
        if (entry.symbol != Escape)
            values.push_back(entry.value);
        else if (t == 0 && nextEscaped < escaped.size())
            values.push_back(escaped[nextEscaped++]);
        else if (t == 0)
            return fail("an array escapes more often than it has values for");
        t = entry.next;
        if (t >= tables.size())
            return fail("the table of an array names another that is not there");
    }
    return nextEscaped == escaped.size() ? values : fail("an array leaves escaped values over");
}

Values PacketReader::readLater(int depth)
{
    if (depth > Deepest)
        return fail("arrays are nested too deeply");
    CodeText text;
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
        return fail("an array has an unknown codec");
    const std::int32_t bits = m_cursor.i32();
    if (bits < 0)
        return fail("an array has a negative size");
    text.bits = static_cast<std::uint64_t>(bits);
    text.words = m_cursor.take((text.bits + 31) / 32 * 4);
    if (codec == Arithmetic)
        return checked(withTable(text, depth), text.count);
    if (codec == BitLength)
        return checked(bitLengthLater(text), text.count);
    if (text.words.size() / 4 < text.count)
        return fail("an array has fewer bits than its values need");
    Cursor words(text.words, m_cursor.isBigEndian());
    Values values(text.count);
    for (std::int32_t& value : values)
        value = words.i32();
    return values;
}

Values PacketReader::withTable(CodeText text, int depth)
{
    const std::vector<Table> tables = tableLater();
    if (tables.empty())
        return {};
    bool hasEscape = m_major < 10;
    for (const Entry& entry : tables[0])
        hasEscape = hasEscape || entry.symbol == Escape;
    const Values escaped = hasEscape ? readLater(depth + 1) : Values();
    if (!m_cursor.isOk())
        return {};
    return text.bits == 0 ? escaped : arithmetic(text, tables, escaped);
}

std::vector<PacketReader::Table> PacketReader::tableLater()
{
    BitReader bits(m_cursor.rest());
    const std::uint64_t end = m_cursor.left() * 8;
    const std::uint32_t n = bits.u(16);
    const unsigned symbolBits = m_major < 10 ? bits.u(6) : 1;
    const unsigned occurrenceBits = bits.u(6);
    const unsigned valueBits = bits.u(m_major < 10 ? 6 : 7);
    const std::uint32_t least = bits.u(32);
    const unsigned width = symbolBits + occurrenceBits + valueBits;
    if (symbolBits > 32 || occurrenceBits == 0 || occurrenceBits > 32 || valueBits > 32 || bits.isBeyond(end) ||
        n > (end - bits.position()) / width) {
        m_cursor.fail("the table of an array is damaged");
        return {};
    }
    Table table;
    for (std::uint32_t i = 0; i < n; ++i) {
        Entry entry{};
        const std::uint32_t symbol = bits.u(symbolBits);
        entry.symbol = m_major < 10 ? static_cast<std::int32_t>(symbol - 2u) : symbol ? Escape : 0;
        entry.occurrences = bits.u(occurrenceBits);
        entry.value = static_cast<std::int32_t>(bits.u(valueBits) + least);
        table.push_back(entry);
    }
    m_cursor.take((bits.position() + 7) / 8);
    return {table};
}

Values PacketReader::chopped(std::size_t count, int depth)
{
    const unsigned chop = m_cursor.u8();
    if (chop == 0 && m_major < 10)
        return readLater(depth + 1);
    const auto bias = m_cursor.u32();
    const unsigned span = m_cursor.u8();
    if (span < chop || span - chop > 31)
        return fail("an array is chopped beyond its bits");
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
            return fail("an array refers to a value that is not there");
        }
        window.insert(window.begin(), value);
        values.push_back(value);
    }
    return values;
}

Values PacketReader::bitLengthLater(const CodeText& text)
{
    const bool isMark2 = m_major < 10;
    BitReader bits(text.words, flip());
    const auto nibbles = [&] {
        std::uint32_t value = 0;
        unsigned k = 0;
        do
            value |= bits.u(4) << 4 * k++;
        while (bits.u(1) == 1 && k < 8);
        const unsigned unused = 32 - 4 * k;
        return static_cast<std::int32_t>(value << unused) >> unused;
    };
    Values values;
    values.reserve(text.count);
    if (bits.u(1) == 0) {
        const unsigned a = isMark2 ? bits.u(6) : 0;
        const unsigned b = isMark2 ? bits.u(6) : 0;
        if (a > 32 || b > 32)
            return fail("a bit width is out of range");
        const std::int32_t least = isMark2 ? bits.s(a) : nibbles();
        const std::int32_t most = isMark2 ? bits.s(b) : nibbles();
        if (most < least)
            return fail("the range of an array is empty");
        const auto low = static_cast<std::uint32_t>(least);
        const auto width = static_cast<unsigned>(std::bit_width(static_cast<std::uint32_t>(most) - low));
        for (std::size_t i = 0; i < text.count; ++i)
            values.push_back(static_cast<std::int32_t>(bits.u(width) + low));
        return bits.isBeyond(text.bits) ? fail("an array has fewer bits than its values need") : values;
    }
    const auto mean = static_cast<std::uint32_t>(isMark2 ? bits.s(32) : nibbles());
    const unsigned stepBits = isMark2 ? bits.u(3) : 4;
    const unsigned runBits = isMark2 ? bits.u(3) : 4;
    if (stepBits < 2 || runBits == 0)
        return fail("a bit width is out of range");
    const std::int32_t least = -(1 << (stepBits - 1));
    int width = 0;
    while (values.size() < text.count) {
        std::int32_t step = 0;
        do {
            step = bits.s(stepBits);
            width += step;
            if (bits.isBeyond(text.bits))
                return fail("an array has fewer bits than its values need");
        } while (step == least || step == -least - 1);
        if (width < 0 || width > 32)
            return fail("a bit width is out of range");
        for (std::uint32_t run = bits.u(runBits); run > 0 && values.size() < text.count; --run)
            values.push_back(
                static_cast<std::int32_t>(static_cast<std::uint32_t>(bits.s(static_cast<unsigned>(width))) + mean));
    }
    return bits.isBeyond(text.bits) ? fail("an array has fewer bits than its values need") : values;
}

} // namespace ptx::jt
