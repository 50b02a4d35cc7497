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
    /// `interval` is the time from run() to process() in microseconds, of which whole milliseconds count; below one,
    /// and where it is negative, process() begins at the next turn of the event loop.
    znAbstractTimerJob(int interval, QObject* parent);
    ~znAbstractTimerJob() override;

    void run() override;
};
