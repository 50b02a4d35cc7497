#pragma once

#include "host/znKernel/znFileIO.h"
#include "host/znKernelServices/znCameraService.h"
#include "host/znKernelServices/znReferenceService.h"
#include "host/znUtils/znMessage.h"
#include "standalone/formats/SceneReaders.h"
#include "standalone/treeops/BakedGeometry.h"
#include "standalone/znAssets/AssetItems.h"
#include "standalone/znKernel/FrontState.h"
#include "standalone/znKernel/NamedCalls.h"
#include "standalone/znOpenSGUberCamera/CameraTree.h"
#include "standalone/znOpenSGUtils/MaterialBook.h"
#include "standalone/znVariants/VariantStore.h"

#include <QString>

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace zn
{

/// What a call of `znFileIO::load` asked for. The open host has no use for some of it, but lets it be seen.
struct LoadRequest {
    std::vector<QString> files;
    unsigned parentId = 0; ///< 0 for none
    bool sceneWasEmpty = false;
    bool merge = false;
    bool select = false;
};

/// Answers that stand in for the host's own, for hosts and tests that know better; empty in normal work.
struct NodePredicates {
    std::function<bool(const osg::NodePtr& node)> getLock;
    std::function<bool(const osg::NodePtr& node)> hasLockedParent;
    std::function<bool(const osg::NodePtr& node)> isUneditedAssetRoot;
};

/// The readers of mesh formats and of scene files.
formats::SceneReaders sceneReaders();

/// What `znReferenceInterface::notifyReferences` was told.
struct ReferenceNotice {
    unsigned rootId = 0; ///< 0 for none
    int code = 0;
    int argument = 0;
};

/// What the kernel of one session remembers.
struct KernelState {
    /// What `znFileIO::load` reads with; a host adds its own readers here.
    formats::SceneReaders readers = sceneReaders();
    std::vector<znFileIO::loadedS> loadedGeometries;
    LoadRequest lastLoad;
    std::unique_ptr<znReferenceService> referenceService;
    std::unique_ptr<znCameraService> cameraService;
    CameraTree cameras;
    VariantStore variants;
    /// The value of the setting that the preferences were last told.
    QString preferredFolder;

    NodePredicates nodePredicates;
    FrontState front;

    /// Stands beside the scene, not in it; null before the first import.
    osg::RefPtr<osg::NodePtr> environmentSwitch;
    /// Geometries that scales went into, so that parts which are used many times stay shared.
    treeops::BakedGeometry flushedScales;
    std::vector<ReferenceNotice> referenceNotices;
    /// From the id of a plain transform to that of the one that took its place.
    std::unordered_map<std::uint32_t, std::uint32_t> convertedTransforms;

    /// The scene's pool of materials, beside its tree; null until it is asked for.
    osg::RefPtr<osg::NodePtr> materialPool;

    MaterialBook materials;
    AssetItems assetItems;
    /// What `znController::call` and `znOpenSGUtils::call` know. A host adds its own, or puts them in place of these.
    NamedCalls controllerCalls = zn::controllerCalls();
    NamedCalls helperCalls = zn::helperCalls();

    /// What `znModuleBase::sendMessage` asks, in this order: each puts its answer into a message that it knows and
    /// gives true, and leaves any other as it is and gives false. A host adds its own modules here.
    std::vector<std::function<bool(znMessage& message)>> modules;

    /// Answers `znFileIOHelper::canContainMixedAssemblies` in place of the table of formats; empty in normal work.
    std::function<bool(const QString& path)> canContainMixedAssemblies;
};

} // namespace zn
