#pragma once

#include "files/obj/ObjText.h"
#include "scene/Mesh.h"

#include <vector>

namespace files::obj
{

/// The mesh of each section: assimp parses the text and resolves indices, polygons are cut into triangles. Takes the
/// text over. Fails through `task` with what assimp says.
std::vector<osg::Mesh> parseObj(ObjText obj, const ReadTask& task);

} // namespace files::obj
