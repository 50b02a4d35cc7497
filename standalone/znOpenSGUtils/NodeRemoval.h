#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::nodes
{

/// Takes `node` out of its tree and out of the living session's own hands; it is gone unless somebody holds it. Null is
/// ignored.
void removeNode(const osg::NodePtr& node);

} // namespace zn::nodes
