#pragma once

#include "files/SceneBuilding.h"
#include "files/obj/ObjText.h"

#include <map>

namespace files::obj
{

/// What the material libraries of an OBJ file say of each material, by its name in the files (UTF-8). The first of a
/// name counts.
using MtlLooks = std::map<std::string, MaterialLook>;

/// Looks for the libraries beside the OBJ file. What cannot be read or understood in them is a warning.
MtlLooks readMtl(const std::vector<ObjLibrary>& libraries, ReadTask& task);

} // namespace files::obj
