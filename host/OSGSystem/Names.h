#pragma once

#include "host/OSGSystem/Pointers.h"

#include <string>

namespace osg
{

/// The name of `container`, null if it has none or is null. The text is valid until the name changes.
ZN_HOST_EXPORT const char* getName(const AttachmentContainerPtr& container);

/// Names `container`; an empty text takes the name away. The attachments field is edited within its bracket.
ZN_HOST_EXPORT void setName(const AttachmentContainerPtr& container, const std::string& name);

} // namespace osg
