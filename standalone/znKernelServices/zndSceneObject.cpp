#include "host/znKernelServices/zndSceneObject.h"

#include "standalone/znKernelServices/WrappedNodes.h"

bool zndSceneObject::isValid() const
{
    return static_cast<bool>(zn::services::containerOf(*this));
}
