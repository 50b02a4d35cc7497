#pragma once

#include "host/znKernel/znFileIO.h"
#include "host/znKernelServices/znCameraService.h"
#include "host/znKernelServices/znReferenceService.h"
#include "host/znUtils/znMessage.h"
#include "standalone/formats/SceneReaders.h"
#include "standalone/znKernel/FrontState.h"
#include "standalone/znKernel/NamedCalls.h"

#include <QString>

#include <functional>
#include <memory>
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
    /// The value of the setting that the preferences were last told.
    QString preferredFolder;

    FrontState front;

    std::vector<ReferenceNotice> referenceNotices;
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
