#pragma once

#include "host/znJobProcessing/znAbstractJob.h"

/// A job whose work is a function of its own, called on the thread of the application object.
///
/// A process() emits started() first, does its work, assigns m_state and emits processingFinished(), once on every
/// path. It never calls finish(): createBaseConnections() connects the signal to it.
///
/// A running processing job is not stopped by abort(); a subclass that can stop overrides it.
class ZN_HOST_EXPORT znAbstractProcessingJob : public znAbstractJob
{
    Q_OBJECT

public:
    /// See znAbstractJob for parent and ownership.
    explicit znAbstractProcessingJob(QObject* parent);
    ~znAbstractProcessingJob() override;

    /// Emits starting() and calls process(), which has returned when run() returns.
    void run() override;

Q_SIGNALS:
    /// The work is done. The first slot that it reaches is finish().
    void processingFinished();

protected:
    void createBaseConnections() override;

    /// The work, see above. It may open event loops; an exception that leaves it ends the run as znAbstractJob tells.
    virtual void process() = 0;

private:
    friend class znAbstractTimerJob;

    bool beginRun();
    void work();
    void endWithException(const QString& text);
};
