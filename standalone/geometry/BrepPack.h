#pragma once

#include "standalone/OSGSystem/Buffer.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace geometry
{

/// Exact surfaces of several meshes as those of one. What a single mesh has stands for itself; several come with a
/// head that tells them apart. Packs that go into a pack become part of it, so that there is never one within another.
osg::Buffer<std::byte> packBreps(std::span<const osg::Buffer<std::byte>> breps);

/// What went into `brep`, in its order, without a copy; nothing when it says to be a pack and is damaged.
std::optional<std::vector<osg::Buffer<std::byte>>> unpackBreps(const osg::Buffer<std::byte>& brep);

} // namespace geometry
