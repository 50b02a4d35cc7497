#include "host/znJobProcessing/znParallelJobManager.h"

#include "standalone/znJobProcessing/ProcessLimit.h"
#include "standalone/znUtils/CallTrace.h"

znParallelJobManager* znParallelJobManager::the()
{
    static znParallelJobManager manager;
    return &manager;
}

unsigned int znParallelJobManager::getMaxNumProcesses() const
{
    const zn::TracedCall call("znParallelJobManager::getMaxNumProcesses");
    return znJobs::processLimit();
}
