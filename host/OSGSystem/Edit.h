#pragma once

#include "host/OSGSystem/FieldContainer.h"

namespace osg
{

/// Every field of a class: for brackets around a change that is not known in advance.
inline constexpr FieldMask AllFieldsMask = ~FieldMask(0);

/// Opens a change of the fields in `mask`. Each call is matched by one of `endEditCP` with the same arguments.
/// `origin` tells who changes: 1 stands for the application. A null container is ignored.
ZN_HOST_EXPORT void beginEditCP(const FieldContainerPtr& container, FieldMask mask, unsigned origin);

/// Closes the change that `beginEditCP` opened with the same arguments.
ZN_HOST_EXPORT void endEditCP(const FieldContainerPtr& container, FieldMask mask, unsigned origin);

} // namespace osg
