#pragma once

#include "host/znUtils/znMessage.h"

#include <functional>
#include <map>
#include <string>

namespace zn
{

/// Answers a call through its message; false when it failed.
using NamedCall = std::function<bool(znMessage& message, int caller)>;
using NamedCalls = std::map<std::string, NamedCall>;

/// False when nothing goes by this name.
bool call(const NamedCalls& calls, const std::string& name, znMessage& message, int caller);

/// What the open host offers through `znController::call`:
/// - "getSelectedMaterialAssetDirectory": sets "url", a `QUrl`, to the folder that the user chose. Fails without one.
/// - "applyMaterialAssetsToNodes": puts the assets in the folder "url" on the materials of the tree at each of "nodes", a
///   `std::vector<znNodePtr>`, that bear their names. Fails without either.
NamedCalls controllerCalls();

/// What it offers through `znOpenSGUtils::call`:
/// - "loadMaterialAsset": sets "material", an `osg::MaterialPtr`, to that of the asset whose uuid is "uuid", a `QString`.
///   Fails when the library has no such asset.
NamedCalls helperCalls();

} // namespace zn
