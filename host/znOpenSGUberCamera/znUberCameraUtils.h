#pragma once

#include "host/znOpenSGUberCamera/UberCamera.h"

#include <QString>

/// Names of cameras.
class ZN_HOST_EXPORT znUberCameraUtils
{
public:
    /// Empty when it has none or is null.
    static QString getName(const osg::UberCameraPtr& camera);
    /// Names `camera`; null is ignored. With `unique`, a number is appended if another camera of the pool bears the
    /// name.
    static void setName(const osg::UberCameraPtr& camera, const QString& name, bool unique);
};
