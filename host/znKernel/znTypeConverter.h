#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znKernelServices/zndNode.h"

/// Between nodes of the scene graph and their wrappers.
class ZN_HOST_EXPORT znTypeConverter
{
public:
    /// The node behind `node`, null when it is gone or was none.
    static osg::NodePtr convertNode(const zndNode& node);
    /// The wrapper of `node`; a null node gives an empty wrapper.
    static zndNode convertNode(const osg::NodePtr& node);
};
