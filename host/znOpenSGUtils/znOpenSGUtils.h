#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"
#include "host/znUtils/znMessage.h"

#include <string>

/// The door to the helpers of the scene graph.
class ZN_HOST_EXPORT znOpenSGUtils
{
public:
    /// The root of the scene.
    static osg::NodePtr getRoot();

    /// Calls what goes by `name`: it reads attributes of `message` and puts its answer into it, before this returns.
    /// @param caller told to what is called; 0 stands for the application
    /// @return false when nothing goes by this name or the call failed
    static bool call(const std::string& name, znMessage& message, int caller);
};
