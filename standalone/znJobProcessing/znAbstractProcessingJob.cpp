#include "host/znJobProcessing/znAbstractProcessingJob.h"

#include "standalone/znJobProcessing/JobRecord.h"
#include "standalone/znJobProcessing/JobScheduler.h"

#include <QtDebug>

#include <exception>
#include <utility>

using znJobs::JobRecord;

namespace
{

/// One call of process(): jobs of queues wait, and it knows whether the call has announced its end.
class WorkScope
{
public:
    explicit WorkScope(JobRecord& record) : m_record(record), m_outer(std::exchange(record.announced, false))
    {
        ++m_record.working;
    }
    ~WorkScope()
    {
        --m_record.working;
        m_record.announced = m_outer;
    }
    WorkScope(const WorkScope&) = delete;
    WorkScope& operator=(const WorkScope&) = delete;

private:
    JobRecord& m_record;
    const bool m_outer;
    const znJobs::JobScheduler::ProcessingScope m_processing;
};

} // namespace

znAbstractProcessingJob::znAbstractProcessingJob(QObject* parent) : znAbstractJob(parent) {}

znAbstractProcessingJob::~znAbstractProcessingJob() = default;

void znAbstractProcessingJob::createBaseConnections()
{
    if (m_connectionsMade) {
        return;
    }
    connect(this, &znAbstractProcessingJob::processingFinished, this, [this] {
        JobRecord::of(*this)->announced = true;
        finish();
    });
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
    if ((record->working > 0 && !record->announced) || (record->delay && record->delay->isActive())) {
        qWarning() << "run() was called on a" << metaObject()->className() << "that is running";
        return false;
    }
    createBaseConnections();
    Q_EMIT starting();
    return record->job != nullptr;
}

void znAbstractProcessingJob::work()
{
    const znJobs::BusyScope busy(*this);
    const std::shared_ptr<JobRecord> record = JobRecord::of(*this);
    const WorkScope scope(*record);
    try {
        process();
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
    bool& announced = JobRecord::of(*this)->announced;
    if (!std::exchange(announced, true)) {
        m_state = znCADFileTypes::JobFailed;
        finish();
    }
}
