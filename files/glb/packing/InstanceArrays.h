#pragma once

#include "files/glb/packing/Affine.h"
#include "files/glb/packing/PackedStreams.h"
#include "files/glb/packing/PositionGrid.h"

#include <map>
#include <vector>

namespace files::glb::packing
{

/// The extension by which a node draws its mesh at several places.
inline constexpr const char* instancing = "EXT_mesh_gpu_instancing";

/// Whether `node` does.
bool isInstanced(const Json& node);

/// From the space of the mesh into that of `node`: one transform for each instance, or the identity alone for a node
/// without instances.
std::vector<Affine> instancesOf(const PackedFile& file, const Json& node);

/// Packs the arrays of instances. Positions on a grid are scaled up at each instance.
class InstanceArrays
{
public:
    /// What is added to `streams` is read from `file`; both must outlive this object.
    InstanceArrays(const PackedFile& file, PackedStreams& streams) : m_file(file), m_streams(streams) {}

    /// Makes `node`, whose mesh lies on `grid`, refer to packed arrays. Nodes with the same arrays share them.
    void pack(Json& node, const PositionGrid& grid);

private:
    std::size_t add(const char* name, const char* type, const std::vector<float>& values);

    const PackedFile& m_file;
    PackedStreams& m_streams;
    std::map<std::pair<std::string, PositionGrid>, Json> m_known; ///< by what refers to the arrays
};

} // namespace files::glb::packing
