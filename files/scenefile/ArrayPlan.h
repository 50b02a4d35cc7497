#pragma once

#include "scene/Buffer.h"

#include <cstdint>
#include <span>
#include <unordered_map>

namespace osg::scenefile
{

/// The arrays of one chunk and their places in it. An array that many share is taken once.
class ArrayPlan
{
public:
    struct Piece {
        const void* data;
        std::uint64_t size;
        std::uint64_t offset;
    };

    /// Arrays start at multiples of this, so that they can be loaded in wide steps.
    static constexpr std::uint64_t alignment = 16;

    /// Plans `array` in and returns its offset within the chunk. It must live until the chunk is written.
    template <class T>
    std::uint64_t place(const Buffer<T>& array)
    {
        return place(array.data(), array.size() * sizeof(T));
    }

    std::uint64_t place(std::span<const std::byte> bytes) { return place(bytes.data(), bytes.size()); }

    const std::vector<Piece>& pieces() const { return m_pieces; }
    /// Of the chunk, in bytes.
    std::uint64_t size() const { return m_size; }

private:
    std::uint64_t place(const void* data, std::uint64_t size);

    std::vector<Piece> m_pieces;
    std::unordered_multimap<const void*, std::size_t> m_known; ///< start of an array to its pieces
    std::uint64_t m_size = 0;
};

} // namespace osg::scenefile
