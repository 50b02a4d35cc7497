#pragma once

#include "standalone/session/Session.h"
#include "standalone/treeops/BakedGeometry.h"
#include "standalone/znAssets/AssetItems.h"
#include "standalone/znOpenSGUberCamera/CameraTree.h"
#include "standalone/znOpenSGUtils/MaterialBook.h"
#include "standalone/znVariants/VariantStore.h"

#include <functional>
#include <unordered_map>

namespace zn
{

/// Answers that stand in for the host's own, for hosts and tests that know better; empty in normal work.
struct NodePredicates {
    std::function<bool(const osg::NodePtr& node)> getLock;
    std::function<bool(const osg::NodePtr& node)> hasLockedParent;
    std::function<bool(const osg::NodePtr& node)> isUneditedAssetRoot;
};

/// What the kernel of one session remembers.
struct KernelState {
    CameraTree& cameras = Session::require().state<CameraTree>();
    VariantStore& variants = Session::require().state<VariantStore>();

    NodePredicates nodePredicates;

    /// Geometries that scales went into, so that parts which are used many times stay shared.
    treeops::BakedGeometry flushedScales;
    /// From the id of a plain transform to that of the one that took its place.
    std::unordered_map<std::uint32_t, std::uint32_t> convertedTransforms;

    /// The scene's pool of materials, beside its tree; null until it is asked for.
    osg::RefPtr<osg::NodePtr> materialPool;

    MaterialBook materials;
    AssetItems assetItems;
};

} // namespace zn
