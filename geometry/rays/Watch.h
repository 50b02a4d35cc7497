#pragma once

#include <atomic>
#include <functional>

namespace geometry::rays
{

/// Tells how far the work is and asks whether it is still wanted. `report` belongs to the calling thread, `cancelled`
/// may be called from any.
class Watch
{
public:
    Watch(const std::function<void(double)>& progress, const std::atomic<bool>* cancel)
        : m_progress(progress), m_cancel(cancel)
    {
    }

    bool cancelled() const { return m_cancel && m_cancel->load(std::memory_order_relaxed); }

    void report(double done)
    {
        if (!m_progress || done <= m_done)
            return;
        m_done = done;
        m_progress(done);
    }

private:
    const std::function<void(double)>& m_progress;
    const std::atomic<bool>* m_cancel;
    double m_done = -1;
};

} // namespace geometry::rays
