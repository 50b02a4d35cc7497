#pragma once

#include "files/gltf/GltfAccessors.h"
#include "host/OSGSystem/Math.h"

#include <optional>

namespace files::gltf
{

/// Where the mesh of `node` stands below it by `EXT_mesh_gpu_instancing`; nothing when the node does not have that, and
/// draws its mesh itself. `accessors` reads the places. Fails `task` with `place`, that of the node, when the lists are
/// of different lengths or there is none, and when a number is not finite.
std::optional<std::vector<osg::Matrix>> instancesOf(const tinygltf::Node& node, GltfAccessors& accessors,
                                                    ReadTask& task, const QString& place);

} // namespace files::gltf
