#pragma once

#include "host/HostExport.h"

/// Knows how many child processes the queues of the host may run at a time.
class ZN_HOST_EXPORT znParallelJobManager
{
public:
    /// The only one; never null, valid as long as the program runs.
    static znParallelJobManager* the();

    /// The bound, at least 1. Asked anew for each start, so a change counts from the next one; running processes stay.
    unsigned int getMaxNumProcesses() const;

private:
    znParallelJobManager() = default;
};
