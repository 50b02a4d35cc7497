#pragma once

#include "host/znUtils/znMessage.h"

namespace zn::assets
{

/// What the asset manager answers through `znOpenSGUtils::call`: sets "material", an `osg::MaterialPtr`, to that of the
/// asset whose uuid is "uuid", a `QString`. Fails when the library has no such asset.
bool loadMaterialAsset(znMessage& message, int caller);

///@{
/// What it answers through `znController::call`. The first sets "url", a `QUrl`, to the folder that the user chose, and
/// fails without one. The second puts the assets in the folder "url" on the materials of the tree at each of "nodes", a
/// `std::vector<znNodePtr>`, that bear their names, and fails without either.
bool getSelectedMaterialAssetDirectory(znMessage& message, int caller);
bool applyMaterialAssetsToNodes(znMessage& message, int caller);
///@}

} // namespace zn::assets
