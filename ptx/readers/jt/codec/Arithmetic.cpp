#include "ptx/readers/jt/codec/Arithmetic.h"

#include "ptx/readers/jt/codec/BitReader.h"

namespace ptx::jt::codec
{

namespace
{

/// For each number below the sum of occurrences, the entry that it stands for.
struct Slots {
    std::vector<std::uint32_t> entry;
    std::vector<std::uint32_t> start; ///< by entry
};

} // namespace

Values decodeArithmetic(const CodeText& text, const std::vector<CodeTable>& tables, const Values& escaped,
                        container::Cursor& cursor)
{
    std::vector<Slots> slots(tables.size());
    for (std::size_t t = 0; t < tables.size(); ++t)
        for (std::uint32_t i = 0; i < tables[t].size(); ++i) {
            const std::uint32_t n = tables[t][i].occurrences;
            if (n > 65535 || slots[t].entry.size() + n > 65535)
                return failed(cursor, "the table of an array is damaged");
            slots[t].start.push_back(static_cast<std::uint32_t>(slots[t].entry.size()));
            slots[t].entry.insert(slots[t].entry.end(), n, i);
        }
    BitReader bits(text.words, text.flip);
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
            return failed(cursor, "the code of an array stands for nothing");
        const std::uint32_t number = slots[t].entry[q];
        const CodeEntry& entry = tables[t][number];
        const std::uint32_t start = slots[t].start[number];
        high = low + range * (start + entry.occurrences) / total - 1;
        low = low + range * start / total;
        if (low > high)
            return failed(cursor, "the code of an array stands for nothing");
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
        if (entry.symbol != CodeEntry::Escape)
            values.push_back(entry.value);
        else if (t == 0 && nextEscaped < escaped.size())
            values.push_back(escaped[nextEscaped++]);
        else if (t == 0)
            return failed(cursor, "an array escapes more often than it has values for");
        t = entry.next;
        if (t >= tables.size())
            return failed(cursor, "the table of an array names another that is not there");
    }
    return nextEscaped == escaped.size() ? values : failed(cursor, "an array leaves escaped values over");
}

} // namespace ptx::jt::codec
