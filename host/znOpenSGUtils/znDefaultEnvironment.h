#pragma once

#include "host/OSGSystem/Material.h"

/// What stands around a scene that brings nothing of its own.
class ZN_HOST_EXPORT znDefaultEnvironment
{
public:
    /// A material named "Default environment" with an image, one for each session. Never null.
    static osg::MaterialPtr getDefault();
};
