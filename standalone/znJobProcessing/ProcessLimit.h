#pragma once

#include <functional>

namespace znJobs
{

using ProcessLimitProvider = std::function<unsigned()>;

/// Makes `provider` answer znParallelJobManager::getMaxNumProcesses() from now on; an empty one brings the default
/// back. A host that has a setting for it installs a function that reads the setting.
void setProcessLimitProvider(ProcessLimitProvider provider);

/// The limit that is in force now, at least 1.
unsigned processLimit();

/// The default of this machine: computed once, from its processors and the memory that was free then.
unsigned defaultProcessLimit();

/// The rule behind it: a process for each processor, as long as each has a gigabyte, and at least one.
unsigned processLimitFor(unsigned processors, unsigned long freeMegabytes);

} // namespace znJobs
