#pragma once

#include "importer/ImportResult.h"

namespace importer
{

/// What a result came from.
enum class Source {
    SceneFile, ///< a tree as an import made it
    MeshFile,  ///< any other file that the host reads by itself
    CadFile,
    Document ///< a product structure
};

/// Looks whether anything came in that can be drawn or followed: a geometry, a camera, a reference to a file. If not, a
/// file that the host reads by itself is named as empty in the messages of `result`, and a structure whose parts have
/// no shapes by the number of its places. What has no place either has failed, and its tree leaves the scene.
/// An import that lacks parts is left as it is: they are named.
void judgeEmptiness(zn::ImportResult& result, Source source);

} // namespace importer
