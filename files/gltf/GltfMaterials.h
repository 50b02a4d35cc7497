#pragma once

#include "files/SceneBuilding.h"
#include "files/gltf/GltfDocument.h"

namespace files::gltf
{

/// The look of the material of this index, with its surface; linear colours become display colours. The base colour is
/// the diffuse colour, whatever the metalness; the specular colour is that of the reflection at right angles (0.04 for
/// what is no metal, the base colour for metal). The shininess is 2 / r^4 - 2 of the roughness r, at most a million:
/// the exponent with which a Blinn-Phong highlight is as wide. Transparency is what the alpha of the base colour
/// leaves, if the alpha mode says that it counts; below the cut-off of the mode MASK everything is transparent.
MaterialLook lookOfMaterial(const GltfDocument& document, std::size_t index);

} // namespace files::gltf
