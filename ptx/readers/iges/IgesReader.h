#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

namespace ptx::iges
{

/// IGES: surfaces, solids and curves with names, colours and layers. Loose faces of a part are sewn together.
core::Outcome<model::Model> read(const model::Job& job);

} // namespace ptx::iges
