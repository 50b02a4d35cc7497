#pragma once

#include "host/OSGSystem/Transform3DBase.h"

namespace osg
{

/// The transform that the host's tools move: what every transform of a finished import is.
class ZN_HOST_EXPORT Transform3D : public Transform3DBase
{
};

} // namespace osg
