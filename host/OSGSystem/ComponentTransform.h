#pragma once

#include "host/OSGSystem/ComponentTransformBase.h"

namespace osg
{

/// A transform that can also be told and asked by its components.
class ZN_HOST_EXPORT ComponentTransform : public ComponentTransformBase
{
};

} // namespace osg
