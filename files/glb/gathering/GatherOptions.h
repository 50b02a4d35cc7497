#pragma once

#include <cstdint>

namespace files::glb
{

/// What makes a file quicker to draw: fewer draw calls. Parts that are gathered are no nodes of the file any more; a
/// table in the `extras` of the node that draws them tells their names and attributes.
struct GatherOptions {
    /// Meshes that stand at several places are drawn by one node for all of them (`EXT_mesh_gpu_instancing`).
    bool instances = false;
    /// Meshes with fewer triangles than this, those at all of their places counted, become one with others, with one
    /// primitive for materials that differ in their colours alone; 0 for none. With `instances`, meshes at several
    /// places do as long as the file has at most a tenth more triangles for it.
    std::uint64_t mergeBelow = 0;

    /// Whether there is anything to do.
    bool isOn() const { return instances || mergeBelow > 0; }
};

} // namespace files::glb
