#include "ptx/core/Limits.h"

#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace ptx::core
{

namespace
{

constexpr double Megabyte = 1024.0 * 1024.0;

// Less than this share of a core counts as no work: the monitor itself takes a little.
constexpr double IdleShare = 0.02;

std::string rounded(double value)
{
    return std::to_string(std::llround(value));
}

double residentMegabytes()
{
    std::FILE* file = std::fopen("/proc/self/statm", "re");
    if (!file)
        return 0;
    long long total = 0;
    long long resident = 0;
    const bool known = std::fscanf(file, "%lld %lld", &total, &resident) == 2;
    std::fclose(file);
    return known ? static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / Megabyte : 0;
}

double processorSeconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

} // namespace

Usage measureUsage()
{
    return {0, processorSeconds(), residentMegabytes()};
}

Limits::Limits(const Settings& settings, std::uint64_t inputBytes)
    : m_settings(settings), m_stallSeconds(settings.number(Setting::StallLimit))
{
    addInput(inputBytes);
}

void Limits::addInput(std::uint64_t bytes)
{
    m_inputBytes += bytes;
    const auto grown = [&](Setting base, Setting perMegabyte) {
        const double most = m_settings.number(base);
        return most == 0 ? 0 : most + m_settings.number(perMegabyte) * (static_cast<double>(m_inputBytes) / Megabyte);
    };
    m_seconds = grown(Setting::TimeLimit, Setting::TimeLimitPerMegabyte);
    m_megabytes = grown(Setting::MemoryLimit, Setting::MemoryLimitPerMegabyte);
}

Trouble Limits::check(const Usage& usage, std::uint64_t signs)
{
    if (m_megabytes > 0 && usage.megabytes > m_megabytes)
        return memoryFailure();
    if (m_seconds > 0 && usage.wallSeconds > m_seconds)
        return Failure{ExitCode::TimeLimit, "the conversion took longer than its limit of " + rounded(m_seconds) +
                                                " s; raise limit.time or limit.time-per-mb, or set limit.time=0"};
    if (Trouble trouble = checkWork(usage, signs))
        return trouble;
    return checkStall(usage, signs);
}

void Limits::limitWork()
{
    const double most = m_settings.number(Setting::WorkLimit);
    const double perMegabyte = m_settings.number(Setting::WorkLimitPerMegabyte);
    m_workSeconds = most == 0 ? 0 : most + perMegabyte * (static_cast<double>(m_inputBytes) / Megabyte);
}

/// Several threads do not use up the limit sooner than one.
Trouble Limits::checkWork(const Usage& usage, std::uint64_t signs)
{
    if (signs != m_lastWorkSigns) {
        m_lastWorkSigns = signs;
        m_lastWork = usage;
    }
    const double seconds =
        std::min(usage.cpuSeconds - m_lastWork.cpuSeconds, usage.wallSeconds - m_lastWork.wallSeconds);
    if (m_workSeconds <= 0 || seconds <= m_workSeconds)
        return std::nullopt;
    return Failure{ExitCode::StallLimit, "the processor worked for " + rounded(seconds) +
                                             " s without progress, as damaged files of this format make it; raise "
                                             "limit.work or limit.work-per-mb, or set limit.work=0"};
}

Trouble Limits::checkStall(const Usage& usage, std::uint64_t signs)
{
    const double wall = usage.wallSeconds - m_lastLifeWall;
    const bool works = usage.cpuSeconds - m_lastLifeCpu > IdleShare * wall && wall > 1;
    if (signs != m_lastSigns || works) {
        m_lastSigns = signs;
        m_lastLifeWall = usage.wallSeconds;
        m_lastLifeCpu = usage.cpuSeconds;
        return std::nullopt;
    }
    if (m_stallSeconds <= 0 || wall <= m_stallSeconds)
        return std::nullopt;
    return Failure{ExitCode::StallLimit, "no progress and no work of the processor for " + rounded(wall) +
                                             " s; raise limit.stall, or set limit.stall=0"};
}

Failure Limits::memoryFailure() const
{
    return {ExitCode::MemoryLimit, "the conversion needs more memory than its limit of " + rounded(m_megabytes) +
                                       " MB; raise limit.memory or limit.memory-per-mb, or set limit.memory=0"};
}

} // namespace ptx::core
