#include "ptx/core/TimedProgress.h"

#include <chrono>
#include <cmath>

namespace ptx::core
{

TimedProgress::TimedProgress(Progress& progress, double start, double seconds)
    : m_progress(progress), m_thread([this, start, seconds] { run(start, seconds); })
{
}

TimedProgress::~TimedProgress()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void TimedProgress::run(double start, double seconds)
{
    const auto begin = std::chrono::steady_clock::now();
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, std::chrono::milliseconds(100), [this] { return m_ended; })) {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
        m_progress.creep(start + (1 - start) * (1 - std::exp2(-passed.count() / seconds)));
    }
}

} // namespace ptx::core
