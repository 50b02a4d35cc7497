#include "files/scenefile/Checksum.h"

#include <zlib.h>

namespace osg::scenefile
{

std::uint32_t checksum(const void* data, std::size_t size, std::uint32_t start)
{
    return static_cast<std::uint32_t>(crc32_z(start, static_cast<const Bytef*>(data), size));
}

} // namespace osg::scenefile
