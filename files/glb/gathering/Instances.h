#pragma once

#include "files/glb/packing/Affine.h"

#include <optional>
#include <vector>

namespace files::glb::gathering
{

/// A place as an instance tells it: scale, then rotation by a unit quaternion (x, y, z, w), then translation.
struct InstancePlace {
    packing::Vector translation;
    std::array<double, 4> rotation;
    packing::Vector scale;
};

/// `place` in these parts; nothing where it shears or flattens.
std::optional<InstancePlace> instancePlace(const packing::Affine& place);

/// A node that draws `mesh` at `places` by `EXT_mesh_gpu_instancing`, whose arrays are added to `file`.
packing::Json instancesNode(packing::PackedFile& file, std::size_t mesh, const std::vector<InstancePlace>& places);

} // namespace files::glb::gathering
