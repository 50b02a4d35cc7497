#include "files/glb/packing/PackedStreams.h"

#include <meshoptimizer.h>

#include <cstring>
#include <limits>

namespace files::glb::packing
{

namespace
{

constexpr const char* extension = "EXT_meshopt_compression";

enum Type { UnsignedShort = 5123, UnsignedInt = 5125 };
enum Target { VertexData = 34962, IndexData = 34963 };

using Bytes = std::vector<std::byte>;

unsigned char* data(Bytes& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

void pad(Bytes& bytes)
{
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

/// Indices of 2 or 4 bytes as those of 4.
std::vector<std::uint32_t> wide(const Bytes& bytes, std::size_t width)
{
    std::vector<std::uint32_t> result(bytes.size() / width);
    for (std::size_t i = 0; i < result.size(); ++i) {
        std::uint16_t narrow = 0;
        if (width == sizeof(narrow)) {
            std::memcpy(&narrow, &bytes[i * width], width);
            result[i] = narrow;
        } else {
            std::memcpy(&result[i], &bytes[i * width], width);
        }
    }
    return result;
}

} // namespace

PackedStreams::Stream& PackedStreams::stream(const std::string& kind, std::size_t width, Filter filter,
                                             std::size_t& number)
{
    const auto [entry, isNew] = m_numbers.try_emplace({kind, width, filter}, m_streams.size());
    if (isNew)
        m_streams.push_back({width, filter, false, false, {}});
    number = entry->second;
    return m_streams[number];
}

std::size_t PackedStreams::addVertices(const std::string& kind, std::size_t width, Filter filter, const Bytes& bytes,
                                       Json accessor)
{
    std::size_t number = 0;
    Stream& to = stream(kind, width, filter, number);
    accessor["bufferView"] = number;
    if (!to.bytes.empty())
        accessor["byteOffset"] = to.bytes.size();
    accessor["count"] = bytes.size() / width;
    to.bytes.insert(to.bytes.end(), bytes.begin(), bytes.end());
    m_accessors.push_back(std::move(accessor));
    return m_accessors.size() - 1;
}

/// The largest number of a type is no index in glTF.
std::size_t PackedStreams::addIndices(const std::vector<std::uint32_t>& indices, std::size_t vertices,
                                      bool areTriangles)
{
    const bool isShort = vertices <= std::numeric_limits<std::uint16_t>::max();
    std::size_t number = 0;
    Stream& to = stream(areTriangles ? "triangles" : "indices", isShort ? 2 : 4, Filter::None, number);
    to.isIndex = true;
    to.areTriangles = areTriangles;
    Json accessor = {{"bufferView", number},
                     {"componentType", int(isShort ? UnsignedShort : UnsignedInt)},
                     {"count", indices.size()},
                     {"type", "SCALAR"}};
    const std::size_t start = to.bytes.size();
    if (start > 0)
        accessor["byteOffset"] = start;
    to.bytes.resize(start + indices.size() * to.width);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const auto narrow = static_cast<std::uint16_t>(indices[i]);
        std::memcpy(&to.bytes[start + i * to.width],
                    isShort ? static_cast<const void*>(&narrow) : static_cast<const void*>(&indices[i]), to.width);
    }
    m_accessors.push_back(std::move(accessor));
    return m_accessors.size() - 1;
}

/// The glTF extension knows version 1 of packed indices and version 0 of packed vertices.
Bytes PackedStreams::compressed(const Stream& stream)
{
    const std::size_t count = stream.bytes.size() / stream.width;
    Bytes result;
    std::size_t size = 0;
    if (!stream.isIndex) {
        meshopt_encodeVertexVersion(0);
        result.resize(meshopt_encodeVertexBufferBound(count, stream.width));
        size = meshopt_encodeVertexBuffer(data(result), result.size(), stream.bytes.data(), count, stream.width);
    } else {
        meshopt_encodeIndexVersion(1);
        const std::vector<std::uint32_t> indices = wide(stream.bytes, stream.width);
        const std::size_t most = std::numeric_limits<std::uint32_t>::max();
        result.resize(stream.areTriangles ? meshopt_encodeIndexBufferBound(count, most)
                                          : meshopt_encodeIndexSequenceBound(count, most));
        size = stream.areTriangles ? meshopt_encodeIndexBuffer(data(result), result.size(), indices.data(), count)
                                   : meshopt_encodeIndexSequence(data(result), result.size(), indices.data(), count);
    }
    result.resize(size);
    return result;
}

Json PackedStreams::take(PackedFile& file, bool compress)
{
    file.binary.clear();
    file.bufferViews = Json::array();
    std::uint64_t plainSize = 0;
    for (Stream& stream : m_streams) {
        Json view = {{"buffer", compress ? 1 : 0},
                     {"byteOffset", compress ? plainSize : file.binary.size()},
                     {"byteLength", stream.bytes.size()},
                     {"target", int(stream.isIndex ? IndexData : VertexData)}};
        if (!stream.isIndex)
            view["byteStride"] = stream.width;
        plainSize += (stream.bytes.size() + 3) / 4 * 4;
        const Bytes bytes = compress ? compressed(stream) : std::move(stream.bytes);
        if (compress) {
            Json& packed = view["extensions"][extension];
            packed = {{"buffer", 0},
                      {"byteOffset", file.binary.size()},
                      {"byteLength", bytes.size()},
                      {"byteStride", stream.width},
                      {"count", stream.bytes.size() / stream.width},
                      {"mode", !stream.isIndex       ? "ATTRIBUTES"
                               : stream.areTriangles ? "TRIANGLES"
                                                     : "INDICES"}};
            if (stream.filter == Filter::Octahedral)
                packed["filter"] = "OCTAHEDRAL";
            stream.bytes = {};
        }
        file.binary.insert(file.binary.end(), bytes.begin(), bytes.end());
        pad(file.binary);
        file.bufferViews.push_back(std::move(view));
    }
    file.accessors = std::move(m_accessors);
    Json buffers = Json::array({{{"byteLength", file.binary.size()}}});
    if (compress)
        buffers.push_back({{"byteLength", plainSize}, {"extensions", {{extension, {{"fallback", true}}}}}});
    return buffers;
}

} // namespace files::glb::packing
