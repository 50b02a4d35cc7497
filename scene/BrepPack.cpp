#include "scene/BrepPack.h"

#include <array>
#include <cstring>
#include <memory>

namespace osg
{

namespace
{

/// Before the number of members, their sizes and their bytes; all numbers have 64 bits, little-endian.
constexpr std::array<unsigned char, 8> packMagic = {0x89, 'Z', 'N', 'B', 'R', 'E', 'P', 'S'};
constexpr std::size_t wordSize = sizeof(std::uint64_t);

bool isPack(const Buffer<std::byte>& brep)
{
    return brep.size() >= 2 * wordSize && std::memcmp(brep.data(), packMagic.data(), packMagic.size()) == 0;
}

std::uint64_t wordAt(const Buffer<std::byte>& brep, std::size_t word)
{
    std::uint64_t value = 0;
    std::memcpy(&value, brep.data() + word * wordSize, wordSize);
    return value;
}

void append(std::vector<std::byte>& bytes, const void* data, std::size_t size)
{
    const auto* first = static_cast<const std::byte*>(data);
    bytes.insert(bytes.end(), first, first + size);
}

} // namespace

Buffer<std::byte> packBreps(std::span<const Buffer<std::byte>> breps)
{
    std::vector<Buffer<std::byte>> members;
    for (const Buffer<std::byte>& brep : breps) {
        const auto inner = unpackBreps(brep).value_or(std::vector{brep});
        members.insert(members.end(), inner.begin(), inner.end());
    }
    if (members.size() == 1)
        return members.front();
    std::vector<std::byte> bytes;
    append(bytes, packMagic.data(), packMagic.size());
    const std::uint64_t count = members.size();
    append(bytes, &count, wordSize);
    for (const Buffer<std::byte>& member : members) {
        const std::uint64_t size = member.size();
        append(bytes, &size, wordSize);
    }
    for (const Buffer<std::byte>& member : members)
        append(bytes, member.data(), member.size());
    return bytes;
}

std::optional<std::vector<Buffer<std::byte>>> unpackBreps(const Buffer<std::byte>& brep)
{
    if (!isPack(brep))
        return std::vector{brep};
    const std::uint64_t count = wordAt(brep, 1);
    if (count > brep.size() / wordSize - 2)
        return std::nullopt;
    const auto owner = std::make_shared<const Buffer<std::byte>>(brep);
    std::vector<Buffer<std::byte>> members;
    std::size_t next = (2 + count) * wordSize;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t size = wordAt(brep, 2 + i);
        if (size > brep.size() - next)
            return std::nullopt;
        members.emplace_back(owner, brep.data() + next, size);
        next += size;
    }
    return next == brep.size() ? std::optional(members) : std::nullopt;
}

} // namespace osg
