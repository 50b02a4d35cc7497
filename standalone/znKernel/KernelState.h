#pragma once

#include "host/znKernel/znFileIO.h"
#include "host/znKernelServices/znReferenceService.h"
#include "standalone/formats/SceneReaders.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace zn
{

/// What the kernel of one session remembers.
struct KernelState {
    /// What `znFileIO::load` reads with; a host adds its own readers here.
    formats::SceneReaders readers = formats::SceneReaders::builtIn();
    std::vector<znFileIO::loadedS> loadedGeometries;
    std::unique_ptr<znReferenceService> referenceService;

    /// Answers `znFileIOHelper::canContainMixedAssemblies` in place of the table of formats; empty in normal work.
    std::function<bool(const QString& path)> canContainMixedAssemblies;
};

} // namespace zn
