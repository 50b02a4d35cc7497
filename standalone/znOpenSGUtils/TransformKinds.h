#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::nodes
{

/// Makes the plain transform of `node` one that the host's tools move, with the same matrix, name and attachments.
/// Nodes that shared the old core share the new one once each has been converted in the living session.
/// @return whether the core was exchanged; that of a null node, and one of another class, is not
bool convertToTransform3D(const osg::NodePtr& node);

} // namespace zn::nodes
