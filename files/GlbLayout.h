#pragma once

#include <cstdint>

namespace files
{

/// How a binary glTF file begins, and what its chunks are called: little-endian numbers, as the format lays them down.
namespace glblayout
{

inline constexpr std::uint32_t magic = 0x46546C67; ///< "glTF"
inline constexpr std::uint32_t version = 2;
inline constexpr std::uint32_t jsonChunk = 0x4E4F534A;   ///< "JSON"
inline constexpr std::uint32_t binaryChunk = 0x004E4942; ///< "BIN"
inline constexpr std::uint32_t headerSize = 12;          ///< bytes: magic, version, length of the file
inline constexpr std::uint32_t chunkHeaderSize = 8;      ///< bytes: length and name of the chunk

} // namespace glblayout

} // namespace files
