#pragma once

#include "ptx/readers/jt/container/Cursor.h"

#include <algorithm>

namespace ptx::jt::codec
{

/// Takes bits from the most significant one down. Beyond the end there are zeros without end: see `position`.
class BitReader
{
public:
    /// `flip` 3 reads 32-bit words that are stored with their low byte first, 0 plain bytes.
    explicit BitReader(container::Bytes bytes, unsigned flip = 0) : m_bytes(bytes), m_flip(flip) {}

    std::uint64_t position() const { return m_at; }
    bool isBeyond(std::uint64_t bits) const { return m_at > bits; }

    /// `n` bits, 32 at most.
    std::uint32_t u(unsigned n)
    {
        std::uint64_t value = 0;
        while (n > 0) {
            const unsigned have = 8 - (m_at & 7);
            const unsigned taken = std::min(n, have);
            const std::uint64_t at = m_at >> 3;
            const unsigned byte = at < m_bytes.size() ? m_bytes[at ^ m_flip] : 0u;
            value = value << taken | ((byte >> (have - taken)) & ((1u << taken) - 1));
            m_at += taken;
            n -= taken;
        }
        return static_cast<std::uint32_t>(value);
    }

    /// The same as a number in two's complement.
    std::int32_t s(unsigned n)
    {
        if (n == 0)
            return 0;
        const unsigned unused = 32 - n;
        return static_cast<std::int32_t>(u(n) << unused) >> unused;
    }

private:
    container::Bytes m_bytes;
    std::uint64_t m_at = 0;
    unsigned m_flip;
};

} // namespace ptx::jt::codec
