#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znKernelServices/zndObject.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUberCamera/UberCamera.h"

#include <cstdint>

namespace zn::services
{

/// The id of the living session; 0 stands for none.
std::uint64_t livingSessionId();

/// The container that `object` stands for in the living session; null when it is gone or of another session.
osg::FieldContainerPtr containerOf(const zndObject& object);

/// The same as a node; null also when it is something else.
osg::NodePtr nodeOf(const zndObject& object);

///@{
/// The core of that node; null also when it is of another class.
osg::ExtReferencePtr referenceOf(const zndObject& object);
osg::UberCameraPtr cameraOf(const zndObject& object);
///@}

} // namespace zn::services
