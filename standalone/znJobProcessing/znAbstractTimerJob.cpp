#include "host/znJobProcessing/znAbstractTimerJob.h"

#include "standalone/znJobProcessing/JobRecord.h"

#include <algorithm>
#include <chrono>

using znJobs::JobRecord;

znAbstractTimerJob::znAbstractTimerJob(int interval, QObject* parent) : znAbstractProcessingJob(parent)
{
    std::unique_ptr<QTimer>& delay = JobRecord::of(*this)->delay;
    delay = std::make_unique<QTimer>();
    delay->setSingleShot(true);
    delay->setInterval(std::chrono::floor<std::chrono::milliseconds>(std::chrono::microseconds(std::max(interval, 0))));
    connect(delay.get(), &QTimer::timeout, this, [this] { work(); });
}

znAbstractTimerJob::~znAbstractTimerJob() = default;

void znAbstractTimerJob::run()
{
    if (beginRun()) {
        JobRecord& record = *JobRecord::of(*this);
        record.run = znJobs::RunState::Delayed;
        record.delay->start();
    }
}
