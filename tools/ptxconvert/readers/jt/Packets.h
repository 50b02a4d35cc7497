#pragma once

#include "tools/ptxconvert/readers/jt/Cursor.h"

#include <vector>

namespace ptx::jt
{

using Values = std::vector<std::int32_t>;

/// Decodes the compressed arrays of one segment: each version has its own kind of packet. What is wrong is told by the
/// cursor; the result is empty then.
class PacketReader
{
public:
    /// `major` is the version of the file, 8 to 10; `budget` is how many values may be made in all, those of nested
    /// packets included, since the bytes of a packet do not bound them.
    PacketReader(Cursor& cursor, int major, std::size_t budget) : m_cursor(cursor), m_budget(budget), m_major(major) {}

    Values read() { return m_major < 9 ? readMark1(0) : readLater(0); }

private:
    struct Entry {
        std::int32_t symbol;
        std::uint32_t occurrences;
        std::int32_t value;
        std::uint32_t next;
    };
    using Table = std::vector<Entry>;
    struct CodeText {
        Bytes words;
        std::uint64_t bits = 0;
        std::size_t count = 0;
        std::size_t symbols = 0;
    };

    Values readMark1(int depth);
    Values readLater(int depth);
    Values chopped(std::size_t count, int depth);
    Values movedToFront(std::size_t count, int depth);
    Values withTable(CodeText text, int depth);
    std::vector<Table> tablesMark1();
    std::vector<Table> tableLater();
    std::size_t spend(std::int32_t count);
    Values checked(Values values, std::size_t count);
    Values fail(const char* what);

    Values bitLengthMark1(const CodeText& text);
    Values bitLengthLater(const CodeText& text);
    Values huffman(const CodeText& text, const Table& table, const Values& escaped);
    Values arithmetic(const CodeText& text, const std::vector<Table>& tables, const Values& escaped);
    unsigned flip() const { return m_cursor.isBigEndian() ? 0 : 3; }

    Cursor& m_cursor;
    std::size_t m_budget;
    int m_major;
};

} // namespace ptx::jt
