#pragma once

#include "files/SceneBuilding.h"

#include <string>
#include <vector>

namespace files::gltf
{

/// A material of a glTF file that is an asset of a library. Texts are UTF-8.
struct MaterialAsset {
    std::string uuid; ///< "uuid" of its extras
    std::string name; ///< "name" of its extras, otherwise its own
    /// The picture around it, "environment" of its extras: a path relative to the file; empty for none.
    std::string environmentImage;
    MaterialLook look;
};

/// Reads the material assets of the glTF file at `path`: those with a uuid, in the order of the file. Throws nothing.
files::Expected<std::vector<MaterialAsset>> readMaterialAssets(const QString& path, const ReadOptions& options = {});

} // namespace files::gltf
