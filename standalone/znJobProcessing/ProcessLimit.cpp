#include "standalone/znJobProcessing/ProcessLimit.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <utility>

namespace znJobs
{

namespace
{

ProcessLimitProvider& provider()
{
    static ProcessLimitProvider current;
    return current;
}

/// Without an answer of the system, memory is no bound.
unsigned long freeMegabytes()
{
    std::ifstream info("/proc/meminfo");
    for (std::string line; std::getline(info, line);) {
        if (line.rfind("MemAvailable:", 0) == 0) {
            return std::stoul(line.substr(line.find_first_of("0123456789"))) / 1024;
        }
    }
    return std::numeric_limits<unsigned long>::max();
}

} // namespace

void setProcessLimitProvider(ProcessLimitProvider newProvider)
{
    provider() = std::move(newProvider);
}

unsigned processLimit()
{
    const ProcessLimitProvider& chosen = provider();
    return chosen ? std::max(chosen(), 1U) : defaultProcessLimit();
}

unsigned processLimitFor(unsigned processors, unsigned long megabytes)
{
    return static_cast<unsigned>(std::clamp<unsigned long>(megabytes / 1024, 1, std::max(processors, 1U)));
}

unsigned defaultProcessLimit()
{
    static const unsigned limit = processLimitFor(std::thread::hardware_concurrency(), freeMegabytes());
    return limit;
}

} // namespace znJobs
