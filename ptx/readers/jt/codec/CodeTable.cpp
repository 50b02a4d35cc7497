#include "ptx/readers/jt/codec/CodeTable.h"

#include "ptx/readers/jt/codec/BitReader.h"

#include <limits>

namespace ptx::jt::codec
{

std::vector<CodeTable> readTables(container::Cursor& cursor)
{
    BitReader bits(cursor.rest());
    const std::uint64_t end = cursor.left() * 8;
    const unsigned n = bits.u(8);
    unsigned valueBits = 0;
    std::int32_t least = 0;
    std::vector<CodeTable> tables;
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
            cursor.fail("the table of an array is damaged");
            return {};
        }
        CodeTable& table = tables.emplace_back();
        for (std::uint32_t i = 0; i < entries; ++i) {
            CodeEntry entry{};
            entry.symbol = static_cast<std::int32_t>(bits.u(symbolBits) - 2u);
            entry.occurrences = bits.u(occurrenceBits);
            if (t == 0)
                entry.value = static_cast<std::int32_t>(bits.u(valueBits) + static_cast<std::uint32_t>(least));
            entry.next = bits.u(nextBits);
            table.push_back(entry);
        }
    }
    if (tables.empty()) {
        cursor.fail("an array has no table");
        return {};
    }
    if (tables.size() == 2) {
        std::vector<std::pair<std::int32_t, std::int32_t>> values;
        for (const CodeEntry& entry : tables[0])
            values.emplace_back(entry.symbol, entry.value);
        std::sort(values.begin(), values.end());
        for (CodeEntry& entry : tables[1]) {
            const auto same = std::lower_bound(values.begin(), values.end(),
                                               std::pair(entry.symbol, std::numeric_limits<std::int32_t>::min()));
            if (same != values.end() && same->first == entry.symbol)
                entry.value = same->second;
        }
    }
    cursor.take((bits.position() + 7) / 8);
    return tables;
}

std::vector<CodeTable> readTable(container::Cursor& cursor, int major)
{
    BitReader bits(cursor.rest());
    const std::uint64_t end = cursor.left() * 8;
    const std::uint32_t n = bits.u(16);
    const unsigned symbolBits = major < 10 ? bits.u(6) : 1;
    const unsigned occurrenceBits = bits.u(6);
    const unsigned valueBits = bits.u(major < 10 ? 6 : 7);
    const std::uint32_t least = bits.u(32);
    const unsigned width = symbolBits + occurrenceBits + valueBits;
    if (symbolBits > 32 || occurrenceBits == 0 || occurrenceBits > 32 || valueBits > 32 || bits.isBeyond(end) ||
        n > (end - bits.position()) / width) {
        cursor.fail("the table of an array is damaged");
        return {};
    }
    CodeTable table;
    for (std::uint32_t i = 0; i < n; ++i) {
        CodeEntry entry{};
        const std::uint32_t symbol = bits.u(symbolBits);
        entry.symbol = major < 10 ? static_cast<std::int32_t>(symbol - 2u) : symbol ? CodeEntry::Escape : 0;
        entry.occurrences = bits.u(occurrenceBits);
        entry.value = static_cast<std::int32_t>(bits.u(valueBits) + least);
        table.push_back(entry);
    }
    cursor.take((bits.position() + 7) / 8);
    return {table};
}

} // namespace ptx::jt::codec
