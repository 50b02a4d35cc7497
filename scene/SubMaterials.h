#pragma once

#include "host/OSGSystem/SwitchMaterial.h"

#include <vector>

namespace osg
{

/// What the implementation does with the fields of a switch material.
struct SwitchMaterialAccess {
    /// For an edit whose bracket is still to be opened.
    static MaterialField& materials(SwitchMaterial& material) { return material.m_materials; }
};

/// The materials that `material` holds directly, an environment among them, null entries included; empty for most.
std::vector<MaterialPtr> directSubMaterials(const MaterialPtr& material);

/// `material` and all that it holds at any depth, each once; what a material holds comes before it, so that `material`
/// is the last. A ring of materials is cut where it closes.
std::vector<MaterialPtr> subMaterialsFirst(const MaterialPtr& material);

/// What a switch material looks like at present, through nested ones; any other material is what it looks like. Null
/// when nothing is chosen.
MaterialPtr shownMaterial(const MaterialPtr& material);

} // namespace osg
