#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znKernelServices/zndObject.h"

namespace zn
{

/// The container that `object` stands for in the living session; null when it is gone or of another session.
osg::FieldContainerPtr containerOf(const zndObject& object);

/// The same as a node; null also when it is something else.
osg::NodePtr nodeOf(const zndObject& object);

} // namespace zn
