#pragma once

#include "host/HostExport.h"

/// Makes what the asset manager hands out, and keeps it so that an asset is read once.
class ZN_HOST_EXPORT znAssetItemFactory
{
public:
    /// The only one, valid as long as the program runs; it works on the session that is alive when it is called.
    static znAssetItemFactory& the();

    /// Gives up the materials of assets that nobody but the factory holds.
    void cleanupMaterialItems();

private:
    znAssetItemFactory() = default;
};
