#pragma once

#include "files/glb/packing/PackedFile.h"

#include <cstdint>
#include <map>
#include <tuple>

namespace files::glb::packing
{

/// The buffer views that packed data go into. What is of one kind shares a view, so that a file of many small meshes
/// has few of them, and what is packed is packed in one piece.
class PackedStreams
{
public:
    enum class Filter { None, Octahedral };

    /// Adds `bytes`, elements of `width` bytes, a multiple of four; `kind` keeps unlike data apart. Completes
    /// `accessor` with where they are, and returns its number.
    std::size_t addVertices(const std::string& kind, std::size_t width, Filter filter,
                            const std::vector<std::byte>& bytes, Json accessor);
    /// Adds indices into `vertices` vertices.
    std::size_t addIndices(const std::vector<std::uint32_t>& indices, std::size_t vertices, bool areTriangles);

    /// The document's lists and bytes become those of what was added. Returns the list of buffers.
    Json take(PackedFile& file, bool compress);

private:
    struct Stream {
        std::size_t width = 0;
        Filter filter = Filter::None;
        bool isIndex = false;
        bool areTriangles = false;
        std::vector<std::byte> bytes;
    };

    Stream& stream(const std::string& kind, std::size_t width, Filter filter, std::size_t& number);
    static std::vector<std::byte> compressed(const Stream& stream);

    std::map<std::tuple<std::string, std::size_t, Filter>, std::size_t> m_numbers;
    std::vector<Stream> m_streams;
    Json m_accessors = Json::array();
};

} // namespace files::glb::packing
