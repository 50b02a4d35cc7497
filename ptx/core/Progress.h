#pragma once

#include "ptx/core/Stage.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ptx::core
{

/// Where a conversion stands. Any thread may report; nothing is written from here, the monitor reads it now and then.
/// The percent never falls.
class Progress
{
public:
    /// Enters `stage`: the percent rises to its start, and by one at least unless it is at 99 already. One thread alone
    /// enters stages.
    void begin(Stage stage);
    /// The stages entered so far with the seconds that each took, the present one last: "Convert 0.4 s, Write 0.1 s".
    /// For the thread that enters them.
    std::string stageTimes() const;
    /// The percent does not begin below `percent`, which an attempt before has reached.
    void goOnFrom(int percent) { raise(percent); }
    /// Until the next stage or call, reports are of a step that takes the present stage from `from` to `to` (0 to 1).
    /// For the thread that enters stages, while no other reports.
    void beginStep(double from, double to);
    /// How much of the present stage, or of its step, is done, from 0 to 1.
    void report(double fraction);
    /// As `report`, but no sign of progress.
    void creep(double fraction);
    /// Says that work goes on although its share is not known.
    void touch() { m_signs.fetch_add(1, std::memory_order_relaxed); }

    Stage stage() const { return static_cast<Stage>(m_stage.load(std::memory_order_relaxed)); }
    int percent() const { return m_percent.load(std::memory_order_relaxed); }
    /// Counts reports of every kind; a number that stands still is a conversion without progress.
    std::uint64_t signs() const { return m_signs.load(std::memory_order_relaxed); }

private:
    void raise(int percent);

    std::atomic<int> m_stage{0};
    std::atomic<int> m_percent{0};
    std::atomic<std::uint64_t> m_signs{0};
    double m_stepFrom = 0;
    double m_stepTo = 1;

    using Clock = std::chrono::steady_clock;
    std::vector<std::pair<Stage, Clock::time_point>> m_begun;
};

} // namespace ptx::core
