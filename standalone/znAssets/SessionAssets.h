#pragma once

#include "standalone/znAssets/AssetItems.h"

namespace zn
{

/// The material assets that the living session was asked for.
AssetItems& sessionAssets();

} // namespace zn
