#pragma once

#include "files/scenefile/ChunkFile.h"

#include <scene_generated.h>

namespace osg::scenefile
{

/// Finds the GRAPH chunk and checks it: FlatBuffers' own verifier first, then everything that it cannot know. Indices
/// have their targets, the counts of the nodes make one tree, links are used up, and the limits hold. Whoever walks the
/// graph afterwards needs no checks but those of arrays in other chunks.
files::Expected<const sceneformat::Scene*> checkedGraph(const ChunkFile& file, const SceneFileReadOptions& options);

} // namespace osg::scenefile
