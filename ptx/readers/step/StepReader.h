#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

namespace ptx::step
{

/// STEP AP203, AP214 and AP242 in the text encoding: structure, names, colours and exact geometry.
core::Outcome<model::Model> read(const model::Job& job);

} // namespace ptx::step
