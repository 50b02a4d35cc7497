#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace files::gltf::packing
{

/// What a packed mesh says about its size before anything is unpacked.
struct DracoSize {
    std::uint32_t triangles = 0;
    std::uint32_t vertices = 0; ///< at least so many
};

/// The size of the mesh in `bytes`; nothing when these do not begin as a mesh of the bitstream 2.2 does, which glTF
/// asks for.
std::optional<DracoSize> sizeOfDraco(std::string_view bytes);

} // namespace files::gltf::packing
