#pragma once

#include "host/znKernel/znFileIO.h"

#include <functional>
#include <vector>

namespace zn::kernel
{

/// What `znFileIO::getLoadedGeometriesList` shows: an entry for each file loaded since the list was last cleared.
/// Entries hold no tree. Whoever has ended an import clears the list, so that it does not grow with the life of the
/// session.
struct LoadedGeometries {
    std::vector<znFileIO::loadedS> entries;
};

/// What a call of `znFileIO::load` asks for. The open host has no use for some of it.
struct LoadRequest {
    std::vector<QString> files;
    osg::NodePtr parent;
    bool sceneWasEmpty = false;
    bool merge = false;
    bool select = false;
};

/// Is told each call of `znFileIO::load` before it begins; empty in normal work.
struct LoadObserver {
    std::function<void(const LoadRequest& request)> observe;
};

} // namespace zn::kernel
