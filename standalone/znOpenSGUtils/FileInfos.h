#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::nodes
{

/// Says on `node` which file the tree below it comes from, and of which format. Null leaves what is there as it is,
/// and a null node is ignored.
void setFileInfo(const osg::NodePtr& node, const char* fileName, const char* format);

} // namespace zn::nodes
