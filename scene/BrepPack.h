#pragma once

#include "scene/Buffer.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace osg
{

/// Exact surfaces of several meshes as those of one. What a single mesh has stands for itself; several come with a
/// head that tells them apart. Packs that go into a pack become part of it, so that there is never one within another.
Buffer<std::byte> packBreps(std::span<const Buffer<std::byte>> breps);

/// What went into `brep`, in its order, without a copy; nothing when it says to be a pack and is damaged.
std::optional<std::vector<Buffer<std::byte>>> unpackBreps(const Buffer<std::byte>& brep);

} // namespace osg
