#pragma once

#include "files/SceneBuilding.h"
#include "files/obj/MtlText.h"
#include "files/obj/ObjText.h"

#include <vector>

namespace files::obj
{

/// What the parser makes of checked texts.
struct ParsedObj {
    std::vector<osg::Mesh> meshes;       ///< one for each section
    std::vector<MaterialLook> materials; ///< by number
};

/// Has assimp parse the texts, resolve indices and cut polygons into triangles. Takes the texts over. Fails through
/// `task` with what assimp says.
ParsedObj parseObj(ObjText obj, const MtlText& mtl, const ReadTask& task);

} // namespace files::obj
