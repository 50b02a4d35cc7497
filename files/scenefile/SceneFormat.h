#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

/// The layout of the file around its chunks; see docs/scene-file-format.md. All numbers are little-endian.
namespace osg::scenefile
{

static_assert(std::endian::native == std::endian::little, "arrays are used straight from the file");

/// Tells a transfer as text: a byte with the high bit, a carriage return, a line feed and a DOS end of file.
inline constexpr std::array<unsigned char, 8> fileMagic = {0x89, 'Z', 'N', 'S', 'C', '\r', '\n', 0x1A};
inline constexpr std::uint32_t fileVersion = 1;
inline constexpr std::uint64_t chunkAlignment = 64;

struct FileHeader {
    std::array<unsigned char, 8> magic = fileMagic;
    std::uint32_t version = fileVersion;
    std::uint32_t chunkCount = 0;
    std::uint64_t fileSize = 0;
    std::uint64_t tableOffset = 0;
    std::uint32_t tableChecksum = 0;
    std::array<std::uint32_t, 6> reserved = {};
    std::uint32_t headerChecksum = 0; ///< of the bytes before it
};
static_assert(sizeof(FileHeader) == 64 && offsetof(FileHeader, headerChecksum) == 60);

enum class ChunkType : std::uint32_t {
    Graph = 0x48505247, ///< "GRPH"
    Mesh = 0x4853454D,  ///< "MESH"
    BRep = 0x50455242,  ///< "BREP"
    Image = 0x47414D49, ///< "IMAG"
};

struct ChunkEntry {
    ChunkType type = {};
    std::uint32_t checksum = 0;
    std::uint64_t offset = 0; ///< from the start of the file, a multiple of 64
    std::uint64_t size = 0;
    std::uint64_t reserved = 0;
};
static_assert(sizeof(ChunkEntry) == 32);

constexpr std::uint64_t alignedUp(std::uint64_t value, std::uint64_t alignment)
{
    return (value + alignment - 1) / alignment * alignment;
}

} // namespace osg::scenefile
