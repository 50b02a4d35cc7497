#include "bench/support/ProgramRun.h"

#include "bench/support/Ratio.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

[[noreturn]] void become(const std::vector<std::string>& arguments, const std::string& output)
{
    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    const int file = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    ::dup2(file, STDOUT_FILENO);
    ::execv(pointers[0], pointers.data());
    ::_exit(127);
}

double secondsOf(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

} // namespace

ProgramRun runProgram(const std::vector<std::string>& arguments, const std::string& output)
{
    ProgramRun run;
    int status = -1;
    rusage usage{};
    run.seconds = secondsOf([&] {
        const pid_t child = ::fork();
        if (child == 0)
            become(arguments, output);
        run.succeeded = child > 0 && ::wait4(child, &status, 0, &usage) == child && status == 0;
    });
    run.cpuSeconds = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    run.mebibytes = static_cast<double>(usage.ru_maxrss) / 1024;
    return run;
}
