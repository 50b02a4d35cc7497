#pragma once

#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"

#include <map>
#include <string>

namespace optimization
{

/// The materials of the assets that were loaded in one run, by uuid. It holds no reference.
using AssetCache = std::map<std::string, osg::MaterialPtr>;

/// The material of the asset of which `material` says that it is a copy. Null when it says nothing, or when the host
/// has no such asset, which is asked again the next time. What comes in with an asset is marked as used, once for each
/// load.
osg::MaterialPtr loadAssetMaterial(const osg::MaterialPtr& material, AssetCache& assetCache);

/// Gives a BRDF material the default environment in place of one without an image. Any other material, and one without
/// an environment, is left alone.
void ensureEnvironmentImage(const osg::MaterialPtr& material);

/// Puts `newMaterial` in the place of `oldMaterial` everywhere inside `root`, at any depth: as sub-material and as
/// environment. Each changed entry has an edit of its own. Nothing happens when any of them is null or when
/// `oldMaterial` is `root`.
void replaceSubMaterial(const osg::MaterialPtr& root, const osg::MaterialPtr& oldMaterial,
                        const osg::MaterialPtr& newMaterial);

/// Lets the host put the assets of the folder that its user selected on the tree at `root`, and notes their URL in the
/// file info of `root`, if it has one. Nothing happens without a selected folder.
void applySelectedMaterialAssets(const osg::NodePtr& root);

} // namespace optimization
