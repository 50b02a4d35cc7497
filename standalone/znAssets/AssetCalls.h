#pragma once

#include "host/znUtils/znMessage.h"

namespace zn
{

/// What the asset manager answers under the names of these functions; see `controllerCalls` and `helperCalls`.
bool loadMaterialAsset(znMessage& message, int caller);
bool getSelectedMaterialAssetDirectory(znMessage& message, int caller);
bool applyMaterialAssetsToNodes(znMessage& message, int caller);

} // namespace zn
