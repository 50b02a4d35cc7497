#pragma once

#include "host/HostExport.h"

/// Makes what the asset manager hands out, and keeps it so that an asset is read once.
class ZN_HOST_EXPORT znAssetItemFactory
{
public:
    static znAssetItemFactory& the();

    /// Gives up the materials of assets that nobody but the factory holds.
    void cleanupMaterialItems();

private:
    znAssetItemFactory() = default;
};
