#pragma once

#include "standalone/znJobProcessing/JobRecord.h"

#include <memory>
#include <vector>

namespace znJobs
{

/// Makes the next run of `worker` work for `other`, until it has ended. False if that cannot be: `worker` runs, or
/// `other` works for it, directly or over others.
bool workFor(JobRecord& worker, JobRecord& other);

/// Ends what workFor() made, if it did.
void stopWorking(JobRecord& worker);

/// The jobs that work for `job` and whose run goes on.
std::vector<std::shared_ptr<JobRecord>> workersOf(const JobRecord& job);

/// Whether the job that `job` works for was aborted, or one that worked for it and whose end is being announced.
bool inheritsAbort(const JobRecord& job);

} // namespace znJobs
