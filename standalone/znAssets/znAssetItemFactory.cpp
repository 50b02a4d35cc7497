#include "host/znAssets/znAssetItemFactory.h"

#include "standalone/znAssets/SessionAssets.h"
#include "standalone/znUtils/CallTrace.h"

znAssetItemFactory& znAssetItemFactory::the()
{
    static znAssetItemFactory factory;
    return factory;
}

void znAssetItemFactory::cleanupMaterialItems()
{
    const zn::TracedCall call("znAssetItemFactory::cleanupMaterialItems");
    zn::assets::sessionAssets().cleanUp();
}
