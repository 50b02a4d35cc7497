#pragma once

#include "standalone/znAssets/AssetItems.h"

namespace zn::assets
{

/// The material assets that the living session was asked for.
AssetItems& sessionAssets();

} // namespace zn::assets
