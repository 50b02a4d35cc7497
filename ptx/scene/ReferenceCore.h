#pragma once

#include "host/znOpenSGExt/ExtReference.h"
#include "ptx/model/Model.h"

namespace ptx
{

/// A core in state 0 that names the file of `reference`.
osg::ExtReferencePtr makeReferenceCore(const Reference& reference);

} // namespace ptx
