#pragma once

#include "ptx/model/Job.h"
#include "ptx/readers/step/StepFile.h"

namespace ptx::step
{

/// Turns each product of `content` whose geometry lies in another file into a reference to that file. A file that leads
/// back to `job.input` is not to be followed: its reference has no path, and a warning tells so.
void keepReferences(occt::DocumentContent& content, const model::Job& job);

/// Reads the files that `content`, read from `job.input`, refers to, and whatever these refer to, each file once, and
/// puts what they hold into the products that refer to them. A reference to a file that is missing, that cannot be read
/// or that is being read around it stays empty: its product bears the tag of a missing part, and a warning tells why.
void inlineParts(StepContent& content, const model::Job& job, occt::HealingAhead& ahead);

} // namespace ptx::step
