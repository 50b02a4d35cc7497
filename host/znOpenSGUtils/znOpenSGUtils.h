#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

/// The door to the helpers of the scene graph.
class ZN_HOST_EXPORT znOpenSGUtils
{
public:
    /// The root of the scene.
    static osg::NodePtr getRoot();
};
