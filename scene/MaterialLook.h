#pragma once

#include "host/OSGSystem/PhysicalSurface.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"

#include <optional>

namespace osg
{

/// The look of a simple or an uber material; nothing for a null one and for other classes.
std::optional<SurfaceLook> lookOf(const MaterialPtr& material);

/// The roughness at which a surface has a highlight as wide as that of the Blinn-Phong exponent `shininess`:
/// (2 / (s + 2))^(1/4), rounded to six digits; 1 for exponents that are not above 0.
float roughnessOfShininess(float shininess);
/// The other way round: 2 / r^4 - 2, between 0 and a million.
float shininessOfRoughness(float roughness);

/// What a look amounts to without more being known: no metal, both sides seen, blended where it is transparent.
PhysicalSurface impliedSurface(const SurfaceLook& look);
/// The physically based surface of a material: that of its attachment, or what its look amounts to. Where the surface
/// is blended, the transparency of the look is its opacity. That of a default look for what has none.
PhysicalSurface surfaceOf(const MaterialPtr& material);
/// Attaches `surface` to a material whose look stands already, unless it is what the look amounts to; an attachment
/// that was there goes. Within brackets of the fields that change. Null is ignored.
void setSurface(const MaterialPtr& material, const PhysicalSurface& surface);

} // namespace osg
