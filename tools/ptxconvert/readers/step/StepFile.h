#pragma once

#include "tools/ptxconvert/core/Outcome.h"
#include "tools/ptxconvert/kernel/DocumentWalker.h"
#include "tools/ptxconvert/model/Job.h"

namespace ptx::step
{

/// Reads the STEP file `job.input` without the files that it refers to: products whose geometry lies elsewhere have
/// names for it and nothing else. Enters the stages from reading to structure unless `isPart`, which goes on in the
/// present one.
Outcome<DocumentContent> readStepFile(const Job& job, bool isPart);

} // namespace ptx::step
