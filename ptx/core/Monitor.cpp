#include "ptx/core/Monitor.h"

#include "ptx/core/ProcessEnd.h"

namespace ptx::core
{

namespace
{
constexpr std::chrono::milliseconds Interval(100);
}

Monitor::Monitor(const Progress& progress, ProgressFile& file, Limits& limits, Log& log)
    : m_progress(progress), m_file(file), m_limits(limits), m_log(log), m_thread([this] { run(); })
{
}

Monitor::~Monitor()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_wake.notify_one();
    m_thread.join();
    m_file.write(m_progress.percent(), m_progress.stage());
}

void Monitor::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, Interval, [this] { return m_ended; }))
        look();
}

void Monitor::look()
{
    m_file.write(m_progress.percent(), m_progress.stage());
    Usage usage = measureUsage();
    usage.wallSeconds = m_log.seconds();
    if (const Trouble trouble = m_limits.check(usage, m_progress.signs()))
        processend::end(m_log, {trouble->code, trouble->message + " (in stage " + stageWord(m_progress.stage()) + ")"});
}

} // namespace ptx::core
