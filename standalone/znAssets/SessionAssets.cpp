#include "standalone/znAssets/SessionAssets.h"

#include "standalone/session/Session.h"

zn::assets::AssetItems& zn::assets::sessionAssets()
{
    return Session::require().state<AssetItems>();
}
