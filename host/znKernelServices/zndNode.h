#pragma once

#include "host/znKernelServices/zndSceneObject.h"

#include <QString>

/// Stands for a node.
class ZN_HOST_EXPORT zndNode : public zndSceneObject
{
    Q_OBJECT

public:
    using zndSceneObject::zndSceneObject;

    /// Names the node; nothing happens when it is gone.
    virtual void setName(const QString& name);
};
