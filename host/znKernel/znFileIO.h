#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <vector>

/// Reads files that the host knows by itself into the scene graph.
class ZN_HOST_EXPORT znFileIO
{
public:
    /// What `load` returns when every file went fully well.
    static constexpr int LoadedFully = 131003;
    /// What it returns when some of several files failed.
    static constexpr int LoadedInPart = 1;

    /// The result of one load.
    class ZN_HOST_EXPORT loadedS
    {
    public:
        explicit loadedS(const osg::NodePtr& node);
        /// The node that the load hung under its parent; null when it is gone.
        osg::NodePtr getNode() const;

    private:
        unsigned m_nodeId;
    };

    /// Reads `files` and hangs the tree of each under `parent`, under the scene root when that is null. Each brings one
    /// plain group as its own root.
    /// @param sceneWasEmpty whether this is the first load of the scene; the open host has no views to fit
    /// @param merge reserved for hosts that merge a load into what is there; the open host never does
    /// @param select whether what was loaded becomes the selection
    /// @return 131003 when all went fully well, 0 when nothing was loaded, another number otherwise; the log tells why
    static int load(const std::vector<QString>& files, osg::NodePtr parent, bool sceneWasEmpty, bool merge,
                    bool select);

    /// One entry for each load so far; the last one belongs to the latest.
    static const std::vector<loadedS>& getLoadedGeometriesList();
};
