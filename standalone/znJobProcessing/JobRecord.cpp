#include "standalone/znJobProcessing/JobRecord.h"

#include "standalone/znJobProcessing/Dependence.h"
#include "standalone/znJobProcessing/JobReaper.h"
#include "standalone/znJobProcessing/JobScheduler.h"
#include "standalone/znJobProcessing/QueueRecord.h"

#include <QtDebug>

namespace znJobs
{

bool JobRecord::takesRun() const
{
    const bool between = run == RunState::Idle || run == RunState::Finishing || run == RunState::Awaiting;
    return between && workersOf(*this).empty();
}

StartResult JobRecord::start()
{
    if (!takesRun()) {
        qWarning() << "run() was called on a" << job->metaObject()->className() << "that is running";
        return StartResult::None;
    }
    const BusyScope announcing(*job);
    aborted = (aborted && run != RunState::Idle) || inheritsAbort(*this);
    run = RunState::Starting;
    job->createBaseConnections();
    if (!aborted) {
        Q_EMIT job->starting();
    }
    if (run != RunState::Starting) {
        return StartResult::None;
    }
    return aborted ? StartResult::TakenBack : StartResult::Work;
}

bool JobRecord::abort()
{
    if (phase == JobPhase::Waiting && run == RunState::Idle) {
        queue->takeFromWaiting(*this, JobPhase::Ending);
        endWithoutRun();
    } else if (kind == JobKind::Process) {
        // What runs has to end first, and so has what works for the job, be its own run over or not.
        const bool goesOn = run != RunState::Idle || !workersOf(*this).empty();
        aborted = aborted || goesOn;
        return goesOn;
    } else if (run == RunState::Delayed) {
        endWithoutRun();
    } else if (run == RunState::Starting) {
        aborted = true;
    }
    return false;
}

void JobRecord::stop()
{
    const bool unbegun = run == RunState::Starting || run == RunState::Delayed;
    if (kind == JobKind::Processing && unbegun) {
        abort();
    } else {
        job->abort();
    }
}

void JobRecord::finishRun()
{
    const std::shared_ptr<JobRecord> self = shared_from_this();
    if (run == RunState::Working || (run == RunState::Delayed && kind == JobKind::Process)) {
        run = RunState::Finishing;
    }
    job->finish();
    if (run == RunState::Finishing) {
        run = RunState::Awaiting;
    }
}

void JobRecord::endWithoutRun()
{
    if (delay) {
        delay->stop();
    }
    run = RunState::Idle;
    job->m_state = znCADFileTypes::JobFailed;
    job->m_errorText = znAbstractJob::tr("Aborted");
    announceEnd();
}

void JobRecord::announceEnd()
{
    const std::shared_ptr<JobRecord> self = shared_from_this();
    if (aborted) {
        job->m_state = znCADFileTypes::JobFailed;
    }
    if (run == RunState::Finishing || run == RunState::Awaiting) {
        run = RunState::Idle;
    }
    if (phase == JobPhase::Started || phase == JobPhase::Ending) {
        phase = JobPhase::Announcing;
    }
    deliverEnd();
    if (run == RunState::Idle) {
        stopWorking(*this);
    }
    if (phase == JobPhase::Announcing || phase == JobPhase::Free) {
        letGo();
    }
    JobScheduler::instance().startProcesses();
}

void JobRecord::deliverEnd()
{
    const BusyScope delivering(*job);
    const DeliveryScope delivery(queue);
    Q_EMIT job->finished(job->m_state);
}

/// After finished() was delivered, unless a slot gave the job to a queue.
void JobRecord::letGo()
{
    bool deletes = deletedWhenEnded;
    if (queue) {
        deletes = deletes || queue->deletesEnded;
        queue->remove(*this);
    }
    if (deletes && job) {
        JobReaper::instance().condemn(shared_from_this());
    }
    JobScheduler::release(*this);
}

bool JobRecord::leaveEnded()
{
    if (phase == JobPhase::Announcing && !queue->deletesEnded) {
        queue->remove(*this);
        JobScheduler::release(*this);
    }
    return queue == nullptr;
}

void JobRecord::destroyed()
{
    const std::shared_ptr<JobRecord> self = shared_from_this();
    job = nullptr;
    run = RunState::Idle;
    delay.reset();
    stopWorking(*this);
    if (queue) {
        queue->remove(*this);
    }
    JobScheduler::release(*this);
}

BusyScope::~BusyScope()
{
    if (--m_record->busy == 0 && m_record->condemned) {
        JobReaper::instance().condemn(m_record);
    }
}

} // namespace znJobs
