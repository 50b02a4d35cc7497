#pragma once

#include "host/OSGSystem/SwitchMaterial.h"

namespace osg
{

/// Whether two materials hold the same: entry by entry null, the same material, or two of one class, one name and equal
/// fields, at any depth. For the comparison of the fields of materials: what a file brings along it brings as objects
/// of its own. Rings of materials that hold each other end where they close.
bool holdEqualMaterials(const MaterialField& a, const MaterialField& b);

} // namespace osg
