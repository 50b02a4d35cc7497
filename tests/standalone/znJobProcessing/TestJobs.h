#pragma once

#include "host/znJobProcessing/znAbstractProcessingJob.h"
#include "host/znJobProcessing/znAbstractTimerJob.h"
#include "tests/support/QtPrinters.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringList>

#include <functional>
#include <utility>

/// Runs a function as its process(). The default one does what every process() has to do.
template <typename Base>
class FunctionJob : public Base
{
public:
    using Body = std::function<void(FunctionJob&)>;

    template <typename... Args>
    explicit FunctionJob(Body body = {}, Args... args) : Base(args...), m_body(std::move(body))
    {
    }

    void setState(znCADFileTypes::JobState state) { this->m_state = state; }

    /// The usual end of a process().
    void end(znCADFileTypes::JobState state = znCADFileTypes::JobSucceeded)
    {
        setState(state);
        Q_EMIT this->processingFinished();
    }

    /// Called instead of the end of a run, if set.
    std::function<void(FunctionJob&)> onFinish;

    void endRun() { znAbstractJob::finish(); }

protected:
    void process() override
    {
        Q_EMIT this->started();
        m_body ? m_body(*this) : end();
    }

    void finish() override { onFinish ? onFinish(*this) : endRun(); }

private:
    Body m_body;
};

/// Its process() is called by run().
class DirectJob : public FunctionJob<znAbstractProcessingJob>
{
public:
    explicit DirectJob(Body body = {}, QObject* parent = nullptr) : FunctionJob(std::move(body), parent) {}
};

/// Its process() is called by a timer, after 3 ms.
class TimerJob : public FunctionJob<znAbstractTimerJob>
{
public:
    explicit TimerJob(Body body = {}, QObject* parent = nullptr) : FunctionJob(std::move(body), 3000, parent) {}
};

/// Writes the signals of jobs into one list, in the order in which they come.
class SignalLog
{
public:
    template <typename Job>
    void watch(Job& job, const QString& name = {})
    {
        const auto note = [this, name](const char* signal) { lines << name + QString::fromLatin1(signal); };
        QObject::connect(&job, &znAbstractJob::starting, &m_context, [note] { note("starting"); });
        QObject::connect(&job, &znAbstractJob::started, &m_context, [note] { note("started"); });
        QObject::connect(&job, &znAbstractJob::finished, &m_context, [this, name](znCADFileTypes::JobState state) {
            lines << name + QStringLiteral("finished %1").arg(state);
        });
    }

    QStringList lines;

private:
    QObject m_context;
};

/// Turns the event loop until `condition` holds; false after ten seconds.
template <typename Condition>
bool waitUntil(Condition condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < 10000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    }
    return condition();
}

/// Turns the event loop until nothing is posted any more.
inline void drainEvents()
{
    for (int turn = 0; turn < 10; ++turn) {
        QCoreApplication::processEvents();
    }
}
