#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/core/Settings.h"

#include <atomic>
#include <cstdint>

namespace ptx::core
{

/// What the process uses at one moment.
struct Usage {
    double wallSeconds = 0; ///< since the start of the conversion
    double cpuSeconds = 0;  ///< of all threads together
    double megabytes = 0;   ///< resident
};

/// What this process uses; the wall time is left for the caller.
Usage measureUsage();

/// Watches over time, stall, work and memory of one conversion. Every limit is off at 0.
class Limits
{
public:
    Limits(const Settings& settings, std::uint64_t inputBytes);

    /// Lets the limits grow with a further file of the input. May be called beside `check`, by one thread.
    void addInput(std::uint64_t bytes);

    /// Limits work without progress, too, which is off at first. May be called beside `check`, by one thread.
    void limitWork();

    /// To be called now and then with the present usage and the progress counter.
    /// @return which limit was reached and how to raise it
    Trouble check(const Usage& usage, std::uint64_t signs);

    double seconds() const { return m_seconds; }
    double megabytes() const { return m_megabytes; }
    /// The sentence for a failed allocation.
    Failure memoryFailure() const;

private:
    Trouble checkWork(const Usage& usage, std::uint64_t signs);
    Trouble checkStall(const Usage& usage, std::uint64_t signs);

    Settings m_settings;
    std::uint64_t m_inputBytes = 0;
    std::atomic<double> m_seconds = 0;
    std::atomic<double> m_megabytes = 0;
    std::atomic<double> m_workSeconds = 0;
    double m_stallSeconds;
    std::uint64_t m_lastSigns = 0;
    double m_lastLifeWall = 0;
    double m_lastLifeCpu = 0;
    std::uint64_t m_lastWorkSigns = 0;
    Usage m_lastWork;
};

} // namespace ptx::core
