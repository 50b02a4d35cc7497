#pragma once

#include "host/znJobProcessing/znAbstractProcessingJob.h"

/// A processing job that lets the event loop turn before its work begins, so that a window can show what starting()
/// said.
///
/// run() emits starting() and returns; process() is called by a single-shot timer. Until then abort() ends the job with
/// finished(JobFailed), also from a slot on starting(), and its destruction takes the call back.
class ZN_HOST_EXPORT znAbstractTimerJob : public znAbstractProcessingJob
{
    Q_OBJECT

public:
    /// `interval` is the time from run() to process() in milliseconds; a negative one counts as 0.
    znAbstractTimerJob(int interval, QObject* parent);
    ~znAbstractTimerJob() override;

    void run() override;
};
