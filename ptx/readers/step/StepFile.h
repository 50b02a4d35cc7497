#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/occt/DocumentWalker.h"

namespace ptx::step
{

/// Reads the STEP file `job.input` without the files that it refers to: products whose geometry lies elsewhere have
/// names for it and nothing else. Enters the stages from reading to structure unless `isPart`, which goes on in the
/// present one.
core::Outcome<occt::DocumentContent> readStepFile(const model::Job& job, bool isPart);

/// The failure for the file `path` without geometry, whose `cause` is a clause: "it holds no solids".
core::Failure nothingToImport(const std::string& path, const std::string& cause);

} // namespace ptx::step
