#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

/// The scene of the host.
class ZN_HOST_EXPORT znScenegraph
{
public:
    /// True while nothing hangs below the root.
    static bool isEmpty();
    static osg::NodePtr getRoot();
    /// Null when nothing is selected.
    static osg::NodePtr getSelectedNode();
};
