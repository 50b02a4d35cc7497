#pragma once

#include "host/OSGSystem/Material.h"
#include "standalone/znAssets/AssetLibrary.h"

namespace zn::assets
{

/// A BRDF material with the look, the name and the uuid of an asset. An asset that names a picture gets an environment
/// with it; a picture that cannot be read is told in `complaints`, and its environment has no image.
osg::MaterialPtr makeAssetMaterial(const AssetLibrary::Entry& entry, QStringList& complaints);

} // namespace zn::assets
