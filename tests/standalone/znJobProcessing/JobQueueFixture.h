#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "tests/standalone/znJobProcessing/TestJobs.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <utility>

/// What the log holds when jobs of these names ran one after the other.
inline QStringList endsOf(const QStringList& names)
{
    QStringList lines;
    for (const QString& name : names) {
        lines << name + QStringLiteral(" starting") << name + QStringLiteral(" started")
              << name + QStringLiteral(" finished 0");
    }
    return lines;
}

/// A queue whose jobs log their signals.
class JobQueue : public ::testing::Test
{
protected:
    /// A job of the queue whose signals are logged under `name`.
    DirectJob* add(const QString& name, DirectJob::Body body = {})
    {
        auto* const job = new DirectJob(std::move(body), &jobs);
        log.watch(*job, name + QLatin1Char(' '));
        queue.addJob(job);
        return job;
    }

    bool waitForEmptiness()
    {
        return waitUntil([&] { return !empty.isEmpty(); });
    }

    QObject jobs;
    SignalLog log;
    znJobQueue queue;
    QSignalSpy empty{&queue, &znJobQueue::jobQueueEmpty};
};
