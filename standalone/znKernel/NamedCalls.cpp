#include "standalone/znKernel/NamedCalls.h"

#include "standalone/znAssets/AssetCalls.h"

bool zn::call(const NamedCalls& calls, const std::string& name, znMessage& message, int caller)
{
    const auto found = calls.find(name);
    return found != calls.end() && found->second(message, caller);
}

zn::NamedCalls zn::controllerCalls()
{
    return {{"getSelectedMaterialAssetDirectory", getSelectedMaterialAssetDirectory},
            {"applyMaterialAssetsToNodes", applyMaterialAssetsToNodes}};
}

zn::NamedCalls zn::helperCalls()
{
    return {{"loadMaterialAsset", loadMaterialAsset}};
}
