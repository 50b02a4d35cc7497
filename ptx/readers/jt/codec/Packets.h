#pragma once

#include "ptx/readers/jt/codec/CodeText.h"

namespace ptx::jt::codec
{

/// Decodes the compressed arrays of one segment: each version has its own kind of packet. What is wrong is told by the
/// cursor; the result is empty then.
class PacketReader
{
public:
    /// `major` is the version of the file, 8 to 10; `budget` is how many values may be made in all, those of nested
    /// packets included, since the bytes of a packet do not bound them.
    PacketReader(container::Cursor& cursor, int major, std::size_t budget)
        : m_cursor(cursor), m_budget(budget), m_major(major)
    {
    }

    Values read() { return m_major < 9 ? readMark1(0) : readLater(0); }

private:
    Values readMark1(int depth);
    Values readLater(int depth);
    Values chopped(std::size_t count, int depth);
    Values movedToFront(std::size_t count, int depth);
    Values withTable(const CodeText& text, int depth);
    std::size_t spend(std::int32_t count);
    Values checked(Values values, std::size_t count);
    unsigned flip() const { return m_cursor.isBigEndian() ? 0 : 3; }

    container::Cursor& m_cursor;
    std::size_t m_budget;
    int m_major;
};

} // namespace ptx::jt::codec
