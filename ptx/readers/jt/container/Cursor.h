#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <vector>

namespace ptx::jt::container
{

using Bytes = std::span<const std::uint8_t>;

/// What is wrong with a file, and where: the offset counts from the start of the segment's data as it is unpacked.
struct Damage {
    const char* what = nullptr; ///< null: nothing is wrong
    std::size_t offset = 0;
    explicit operator bool() const { return what != nullptr; }
};

/// Reads numbers from a block of memory. The first error stays: after it every number is 0 and nothing is left.
class Cursor
{
public:
    Cursor(Bytes bytes, bool isBigEndian, std::size_t base = 0) : m_bytes(bytes), m_base(base), m_big(isBigEndian) {}

    bool isOk() const { return !m_damage; }
    const Damage& damage() const { return m_damage; }
    bool isBigEndian() const { return m_big; }
    std::size_t left() const { return m_bytes.size() - m_at; }
    Bytes rest() const { return m_bytes.subspan(m_at); }

    void fail(const char* what)
    {
        if (!m_damage)
            m_damage = {what, m_base + m_at};
        m_at = m_bytes.size();
    }

    /// The next `size` bytes; empty, and an error, if there are fewer.
    Bytes take(std::size_t size)
    {
        if (size > left()) {
            fail("the data ends too early");
            return {};
        }
        m_at += size;
        return m_bytes.subspan(m_at - size, size);
    }

    /// A cursor of its own for the next `size` bytes.
    Cursor part(std::size_t size)
    {
        const std::size_t base = m_base + m_at;
        return {take(size), m_big, base};
    }

    template <class T>
    T number()
    {
        T value{};
        std::uint8_t raw[sizeof(T)];
        const Bytes from = take(sizeof(T));
        if (from.empty())
            return value;
        for (std::size_t i = 0; i < sizeof(T); ++i)
            raw[i] = from[m_big != (std::endian::native == std::endian::big) ? sizeof(T) - 1 - i : i];
        std::memcpy(&value, raw, sizeof(T));
        return value;
    }

    std::uint8_t u8() { return number<std::uint8_t>(); }
    std::int16_t i16() { return number<std::int16_t>(); }
    std::int32_t i32() { return number<std::int32_t>(); }
    std::uint32_t u32() { return number<std::uint32_t>(); }
    float f32() { return number<float>(); }

    /// A count of items that take at least `size` bytes each; an error if that many cannot follow.
    std::size_t count(std::size_t size)
    {
        const std::int32_t n = i32();
        if (n >= 0 && static_cast<std::size_t>(n) <= left() / size)
            return static_cast<std::size_t>(n);
        fail("a count is larger than what follows");
        return 0;
    }

private:
    Bytes m_bytes;
    std::size_t m_at = 0;
    std::size_t m_base;
    bool m_big;
    Damage m_damage;
};

} // namespace ptx::jt::container
