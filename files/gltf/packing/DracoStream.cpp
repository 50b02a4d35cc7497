#include "files/gltf/packing/DracoStream.h"

#include <draco/core/decoder_buffer.h>
#include <draco/core/varint_decoding.h>
#include <draco/metadata/geometry_metadata.h>
#include <draco/metadata/metadata_decoder.h>

#include <array>

namespace files::gltf::packing
{

namespace
{

struct Header {
    std::array<char, 5> magic;
    std::uint8_t major;
    std::uint8_t minor;
    std::uint8_t type;
    std::uint8_t method;
};

constexpr std::string_view magic = "DRACO";
constexpr std::uint8_t mesh = 1;
constexpr std::uint8_t sequential = 0;
constexpr std::uint8_t edgeBreaker = 1;
constexpr std::uint16_t hasMetadata = 0x8000;

bool isKnown(const Header& header)
{
    return std::string_view(header.magic.data(), header.magic.size()) == magic && header.major == 2 &&
           header.minor == 2 && header.type == mesh && header.method <= edgeBreaker;
}

bool skipMetadata(draco::DecoderBuffer& buffer)
{
    draco::GeometryMetadata metadata;
    return draco::MetadataDecoder().DecodeGeometryMetadata(&buffer, &metadata);
}

} // namespace

std::optional<DracoSize> sizeOfDraco(std::string_view bytes)
{
    draco::DecoderBuffer buffer;
    buffer.Init(bytes.data(), bytes.size());
    Header header = {};
    std::uint16_t flags = 0;
    if (!buffer.Decode(&header) || !isKnown(header) || !buffer.Decode(&flags))
        return std::nullopt;
    buffer.set_bitstream_version(DRACO_BITSTREAM_VERSION(header.major, header.minor));
    if ((flags & hasMetadata) != 0 && !skipMetadata(buffer))
        return std::nullopt;
    DracoSize size;
    std::uint8_t traversal = 0;
    const bool isRead =
        header.method == sequential
            ? draco::DecodeVarint(&size.triangles, &buffer) && draco::DecodeVarint(&size.vertices, &buffer)
            : buffer.Decode(&traversal) && draco::DecodeVarint(&size.vertices, &buffer) &&
                  draco::DecodeVarint(&size.triangles, &buffer);
    return isRead ? std::optional(size) : std::nullopt;
}

} // namespace files::gltf::packing
