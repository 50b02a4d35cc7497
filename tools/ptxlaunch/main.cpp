// Stands for a process that a server forks, which saves the start of the real program:
//
//     ptxlaunch SOCKET PROGRAM [ARGUMENT]...
//
// hands the arguments, the environment, the folder and the standard streams to the server at SOCKET, passes signals on,
// and ends as the process ends. Where there is no server, or it goes away, PROGRAM is started as usual.

#include "standalone/launch/LaunchSocket.h"

#include <poll.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace
{

constexpr int wrongUse = 2;
constexpr int cannotStart = 127;

sigset_t passedOn()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&set, number);
    return set;
}

bool request(int server, char** arguments)
{
    protocol::LaunchRequest wanted;
    char* folder = getcwd(nullptr, 0);
    if (!folder)
        return false;
    wanted.folder = folder;
    for (; *arguments; ++arguments)
        wanted.arguments.emplace_back(*arguments);
    for (char** variable = environ; *variable; ++variable)
        wanted.environment.emplace_back(*variable);
    return zn::launch::send(server, wanted, {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO});
}

void passOn(int signals, int server)
{
    signalfd_siginfo signal{};
    if (read(signals, &signal, sizeof signal) != sizeof signal)
        return;
    const auto number = static_cast<unsigned char>(signal.ssi_signo);
    (void)!send(server, &number, 1, MSG_NOSIGNAL);
}

/// Waits for the end of the process and tells its wait status; false when the server went away before.
bool awaitEnd(int server, int& status)
{
    const sigset_t set = passedOn();
    const int signals = signalfd(-1, &set, SFD_CLOEXEC);
    pollfd sources[] = {{server, POLLIN, 0}, {signals, POLLIN, 0}};
    for (;;) {
        if (poll(sources, 2, -1) < 0 && errno != EINTR)
            return false;
        if (sources[0].revents != 0)
            return recv(server, &status, sizeof status, 0) == sizeof status;
        if (sources[1].revents != 0)
            passOn(signals, server);
    }
}

/// Ends this process as the other one ended, without a core file of its own.
[[noreturn]] void endLike(int status)
{
    if (WIFSIGNALED(status)) {
        const rlimit none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
        std::signal(WTERMSIG(status), SIG_DFL);
        sigset_t set;
        sigfillset(&set);
        sigprocmask(SIG_UNBLOCK, &set, nullptr);
        raise(WTERMSIG(status));
        _exit(128 + WTERMSIG(status));
    }
    _exit(WEXITSTATUS(status));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fputs("Usage: ptxlaunch SOCKET PROGRAM [ARGUMENT]...\n", stderr);
        return wrongUse;
    }
    const sigset_t set = passedOn();
    sigset_t before;
    sigprocmask(SIG_BLOCK, &set, &before);
    int status = 0;
    if (const int server = zn::launch::connectedTo(argv[1]);
        server >= 0 && request(server, argv + 3) && awaitEnd(server, status))
        endLike(status);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    execvp(argv[2], argv + 2);
    std::perror(argv[2]);
    return cannotStart;
}
