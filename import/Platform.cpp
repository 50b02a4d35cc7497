#include "import/Platform.h"

#if !defined(_WIN32)

#    include "import/Rest.h"

#    include <sys/resource.h>
#    include <sys/wait.h>

#    include <utility>

namespace
{

bool isSeparator(char letter)
{
    return letter == '/' || letter == '\\';
}

bool isLetter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

} // namespace

void Sleep(unsigned milliseconds)
{
    frame::restUntilEvents(std::chrono::milliseconds(milliseconds));
}

// What changes when a child ends: the one that waits to be collected, and the page faults of all that were collected,
// of which no program has none. Event loops that collect at the signal change the second alone, others both.
bool childProcessHasEnded()
{
    using Traces = std::pair<pid_t, long>;
    thread_local Traces told;
    siginfo_t waiting{};
    rusage collected{};
    if (waitid(P_ALL, 0, &waiting, WEXITED | WNOHANG | WNOWAIT) != 0)
        waiting.si_pid = 0;
    getrusage(RUSAGE_CHILDREN, &collected);
    const Traces now(waiting.si_pid, collected.ru_minflt);
    return std::exchange(told, now) != now;
}

int PathIsRelativeA(const char* path)
{
    const bool isAbsolute = isSeparator(path[0]) || (isLetter(path[0]) && path[1] == ':');
    return isAbsolute ? 0 : 1;
}

const char* PathFindFileNameA(const char* path)
{
    const char* name = path;
    for (; *path; ++path)
        if (isSeparator(*path) && path[1] && !isSeparator(path[1]))
            name = path + 1;
    return name;
}

#endif
