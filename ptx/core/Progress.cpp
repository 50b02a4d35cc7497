#include "ptx/core/Progress.h"

#include "ptx/core/Settings.h"

#include <algorithm>

namespace ptx::core
{

void Progress::begin(Stage stage)
{
    const int least = std::min(percent() + 1, 99);
    m_stage.store(static_cast<int>(stage), std::memory_order_relaxed);
    raise(std::max(stageStart(stage), least));
    beginStep(0, 1);
    touch();
    m_begun.emplace_back(stage, Clock::now());
}

void Progress::beginStep(double from, double to)
{
    m_stepFrom = from;
    m_stepTo = to;
}

std::string Progress::stageTimes() const
{
    std::string text;
    for (std::size_t i = 0; i < m_begun.size(); ++i) {
        const Clock::time_point end = i + 1 < m_begun.size() ? m_begun[i + 1].second : Clock::now();
        const std::chrono::duration<double> seconds = end - m_begun[i].second;
        text += (i ? ", " : "") + std::string(stageWord(m_begun[i].first)) + " " + oneDecimal(seconds.count()) + " s";
    }
    return text;
}

void Progress::report(double fraction)
{
    creep(fraction);
    touch();
}

void Progress::creep(double fraction)
{
    const Stage now = stage();
    const int start = stageStart(now);
    const double share = m_stepFrom + std::clamp(fraction, 0.0, 1.0) * (m_stepTo - m_stepFrom);
    raise(start + static_cast<int>(share * (stageEnd(now) - start)));
}

void Progress::raise(int percent)
{
    int known = m_percent.load(std::memory_order_relaxed);
    while (known < percent && !m_percent.compare_exchange_weak(known, percent, std::memory_order_relaxed)) {
    }
}

} // namespace ptx::core
