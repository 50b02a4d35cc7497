#pragma once

#include <cstddef>
#include <cstdint>

namespace osg::scenefile
{

/// CRC-32 (ISO-HDLC, the one of zlib) of `size` bytes, going on from `start`.
std::uint32_t checksum(const void* data, std::size_t size, std::uint32_t start = 0);

} // namespace osg::scenefile
