#pragma once

#include "files/SceneBuilding.h"
#include "files/obj/MtlMaps.h"
#include "files/obj/ObjText.h"

#include <map>

namespace files::obj
{

/// What the statements of one material say.
struct MtlMaterial {
    MaterialLook look; ///< without its surface: that needs the pictures
    bool hasShininess = false;
    ///@{
    /// Where the library gives them.
    std::optional<osg::Color3f> diffuse, emission, sheen;
    std::optional<float> opacity, transparency, roughness, metalness, clearcoat, clearcoatRoughness;
    ///@}
    std::map<std::string, MtlMap> maps; ///< by their keywords in small letters, "bump" for all of bumps
    QString library;                    ///< the file
};

/// The materials of the libraries of an OBJ file, by their names in the files (UTF-8). The first of a name counts.
using MtlMaterials = std::map<std::string, MtlMaterial>;

/// Looks for the libraries beside the OBJ file. What cannot be read or understood in them is a warning.
MtlMaterials readMtl(const std::vector<ObjLibrary>& libraries, ReadTask& task);

} // namespace files::obj
