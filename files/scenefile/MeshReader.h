#pragma once

#include "files/scenefile/ChunkFile.h"
#include "scene/Mesh.h"

#include <scene_generated.h>

namespace osg::scenefile
{

using MeshList = std::vector<std::shared_ptr<const Mesh>>;

/// The meshes of a checked graph. Their arrays stand on the bytes of the file and keep them alive. Each array lies
/// within its chunk, and each mesh keeps the promises of `osg::Mesh`.
files::Expected<MeshList> readMeshes(const ChunkFile& file, const sceneformat::Scene& scene);

} // namespace osg::scenefile
