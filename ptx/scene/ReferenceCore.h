#pragma once

#include "host/znOpenSGExt/ExtReference.h"
#include "ptx/model/Model.h"

namespace ptx::scene
{

/// A core in state 0 that names the file of `reference`.
osg::ExtReferencePtr makeReferenceCore(const model::Reference& reference);

} // namespace ptx::scene
