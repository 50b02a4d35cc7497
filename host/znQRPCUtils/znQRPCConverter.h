#pragma once

#include "host/OSGSystem/Node.h"

/// Turns what remote callers name into objects of the scene.
class ZN_HOST_EXPORT znQRPCConverter
{
public:
    /// The living node with this container id; null for any other id.
    static osg::NodePtr idToNode(unsigned id);
};
