#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

namespace ptx::brep
{

/// OCCT's own files, text and binary: one shape without names and colours.
core::Outcome<model::Model> read(const model::Job& job);

} // namespace ptx::brep
