#pragma once

#include "optimization/MaterialAssets.h"

#include <vector>

namespace optimization
{

/// Exchanges the materials of the tree at `root` that are copies of assets for the materials of these assets, inside
/// switch materials too. BRDF materials without an image around them get the default environment.
void updateMaterials(const osg::NodePtr& root);

/// The same for one material, which the nodes in `nodes` use; null nodes are passed over. A switch material stays on
/// its nodes: what it holds inside changes.
void updateMaterialFromAsset(const osg::MaterialPtr& material, const std::vector<osg::NodePtr>& nodes,
                             AssetCache& assetCache);

} // namespace optimization
