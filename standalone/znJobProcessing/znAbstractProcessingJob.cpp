#include "host/znJobProcessing/znAbstractProcessingJob.h"

#include "standalone/znJobProcessing/JobRecord.h"
#include "standalone/znJobProcessing/JobScheduler.h"

#include <exception>
#include <new>

using znJobs::JobRecord;
using znJobs::RunState;
using znJobs::StartResult;

znAbstractProcessingJob::znAbstractProcessingJob(QObject* parent) : znAbstractJob(parent) {}

znAbstractProcessingJob::~znAbstractProcessingJob() = default;

void znAbstractProcessingJob::createBaseConnections()
{
    if (m_connectionsMade) {
        return;
    }
    connect(this, &znAbstractProcessingJob::processingFinished, this, [this] { JobRecord::of(*this)->finishRun(); });
    m_connectionsMade = true;
}

void znAbstractProcessingJob::run()
{
    const znJobs::BusyScope busy(*this);
    if (beginRun()) {
        work();
    }
}

bool znAbstractProcessingJob::beginRun()
{
    const std::shared_ptr<JobRecord> record = JobRecord::of(*this);
    const StartResult result = record->start();
    if (result == StartResult::TakenBack) {
        record->endWithoutRun();
    }
    return result == StartResult::Work;
}

void znAbstractProcessingJob::work()
{
    const znJobs::BusyScope busy(*this);
    const znJobs::JobScheduler::ProcessingScope scope;
    JobRecord::of(*this)->run = RunState::Working;
    try {
        process();
    } catch (const std::bad_alloc&) {
        if (busy.alive()) {
            endWithException(tr("There is not enough memory"));
        }
    } catch (const std::exception& exception) {
        if (busy.alive()) {
            endWithException(QString::fromUtf8(exception.what()));
        }
    } catch (...) {
        if (busy.alive()) {
            endWithException(tr("Unknown exception"));
        }
    }
}

void znAbstractProcessingJob::endWithException(const QString& text)
{
    m_errorText = text;
    if (JobRecord::of(*this)->run == RunState::Working) { // the end was not announced before
        m_state = znCADFileTypes::JobFailed;
        JobRecord::of(*this)->finishRun();
    }
}
