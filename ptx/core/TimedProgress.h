#pragma once

#include "ptx/core/Progress.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace ptx::core
{

/// Moves the present stage on by the clock while a step runs that says nothing of its own. It approaches the end and
/// never reaches it, and it is no sign of progress: a step that hangs still counts as a stall.
class TimedProgress
{
public:
    /// From `start` (share of the stage) towards its end; half of the way takes about `seconds`.
    TimedProgress(Progress& progress, double start, double seconds);
    ~TimedProgress();
    TimedProgress(const TimedProgress&) = delete;
    TimedProgress& operator=(const TimedProgress&) = delete;

private:
    void run(double start, double seconds);

    Progress& m_progress;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_ended = false;
    std::thread m_thread;
};

} // namespace ptx::core
