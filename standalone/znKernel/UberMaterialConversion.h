#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::kernel
{

/// Puts an uber material of the same look, name and attachments in place of each simple one at and below `root`. One
/// that is used in several places stays one; materials of other classes stay. Null is ignored.
void convertToUberMaterials(const osg::NodePtr& root);

} // namespace zn::kernel
