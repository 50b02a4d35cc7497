#pragma once

#include "host/znKernelServices/zndObject.h"

/// Stands for a container of the scene graph; the object id is the container's.
class ZN_HOST_EXPORT zndSceneObject : public zndObject
{
    Q_OBJECT

public:
    /// As those of the base class.
    using zndObject::zndObject;

    /// Whether the container is still there. A wrapper of a former session is never valid.
    bool isValid() const;
};
