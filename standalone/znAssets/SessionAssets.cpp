#include "standalone/znAssets/SessionAssets.h"

#include "standalone/session/Session.h"

zn::AssetItems& zn::sessionAssets()
{
    return Session::require().state<AssetItems>();
}
