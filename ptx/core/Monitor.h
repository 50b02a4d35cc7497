#pragma once

#include "ptx/core/Limits.h"
#include "ptx/core/Log.h"
#include "ptx/core/Progress.h"
#include "ptx/core/ProgressFile.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace ptx::core
{

/// A thread that looks at a conversion ten times a second: it writes the progress file and keeps the limits. When a
/// limit is reached it ends the process, because nothing else can stop a CAD library that is at work.
class Monitor
{
public:
    /// All four must outlive the monitor, which starts at once.
    Monitor(const Progress& progress, ProgressFile& file, Limits& limits, Log& log);
    /// Ends the thread; the progress file is up to date then.
    ~Monitor();
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

private:
    void run();
    void look();

    const Progress& m_progress;
    ProgressFile& m_file;
    Limits& m_limits;
    Log& m_log;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_ended = false;
    std::thread m_thread;
};

} // namespace ptx::core
