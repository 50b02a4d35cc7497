#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

namespace ptx::jt
{

/// Reads the JT file of `job` with the files that hold its parts, each once, and whatever these name in turn. A part
/// file that is missing, that cannot be read or that is being read around the place where it is named is left out: its
/// product bears the tag of a missing part, and a warning tells why. With `job.externalParts` the products stay
/// references instead.
core::Outcome<model::Model> readWithParts(const model::Job& job);

} // namespace ptx::jt
