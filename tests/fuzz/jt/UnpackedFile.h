#pragma once

#include "ptx/readers/jt/container/Segments.h"

namespace ptx::jt::container
{

/// Where the scene graph of a file lies that does not pack it; empty if the file is damaged or packs it.
struct Place {
    std::size_t offset = 0;
    std::size_t size = 0;
};
Place plainSceneGraph(Bytes file);

/// The same file with its scene graph and its metadata as they are, not packed, for mutations that reach what lies in
/// them. Segments of which nothing is read are left out. Empty if the file is damaged.
std::vector<std::uint8_t> unpackedFile(Bytes file);

} // namespace ptx::jt::container
