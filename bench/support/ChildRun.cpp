#include "bench/support/ChildRun.h"

#include <array>
#include <ctime>
#include <exception>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

[[noreturn]] void act(const std::function<double()>& action, int pipe)
{
    int code = 1;
    try {
        const double seconds = action();
        code = write(pipe, &seconds, sizeof seconds) == sizeof seconds ? 0 : 1;
    } catch (const std::exception&) {
        code = 1;
    }
    _exit(code);
}

} // namespace

ChildRun runInChild(const std::function<double()>& action)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return {};
    const auto child = fork();
    if (child == 0)
        act(action, ends[1]);
    close(ends[1]);
    ChildRun run;
    run.succeeded = child > 0 && read(ends[0], &run.seconds, sizeof run.seconds) == sizeof run.seconds;
    close(ends[0]);
    int status = 0;
    rusage usage{};
    run.succeeded = run.succeeded && wait4(child, &status, 0, &usage) == child && status == 0;
    run.mebibytes = static_cast<double>(usage.ru_maxrss) / 1024.0;
    return run;
}

double processorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}
