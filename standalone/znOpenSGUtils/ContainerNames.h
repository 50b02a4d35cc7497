#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

namespace zn::nodes
{

/// The name of `container` as a UTF-8 text, empty for one without a name and for null. Valid until the name changes.
const char* nameOrEmpty(const osg::AttachmentContainerPtr& container);

/// Names `container` with a UTF-8 text; null or an empty one takes the name away. With `keep` a name that is there
/// stays. A null container is ignored.
void rename(const osg::AttachmentContainerPtr& container, const char* name, bool keep);

} // namespace zn::nodes
