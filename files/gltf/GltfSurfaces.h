#pragma once

#include "files/gltf/GltfTextures.h"

namespace files::gltf
{

/// The physically based surface of each material of a document, in their order: factors and textures, with those of the
/// extensions `KHR_materials_clearcoat`, `emissive_strength`, `ior`, `pbrSpecularGlossiness`, `sheen`, `specular`,
/// `transmission` and `unlit`. What other extensions of materials say is left out, and counted in a warning.
std::vector<osg::PhysicalSurface> readSurfaces(const nlohmann::json& document, GltfTextures& textures, ReadTask& task);

} // namespace files::gltf
