#include "standalone/znJobProcessing/GroupWatcher.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>

namespace znJobs
{

namespace
{

char shell[] = "/bin/sh";
char commandFlag[] = "-c";
char script[] = "read -r end; kill -KILL 0";
char* const arguments[] = {shell, commandFlag, script, nullptr};
char* const noEnvironment[] = {nullptr};

/// The signals that ask a group to stop are for the others in it.
sigset_t requests()
{
    sigset_t set;
    ::sigemptyset(&set);
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGQUIT}) {
        ::sigaddset(&set, number);
    }
    return set;
}

} // namespace

GroupWatcher::GroupWatcher(pid_t group)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return;
    }
    m_pipe = ends[1];
    spawn(group, ends[0]);
    ::close(ends[0]);
}

/// A spawn, not a fork: a large host would have its page tables copied.
void GroupWatcher::spawn(pid_t group, int pipeEnd)
{
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
    ::posix_spawnattr_setpgroup(&attributes, group);
    const sigset_t blocked = requests();
    ::posix_spawnattr_setsigmask(&attributes, &blocked);

    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, pipeEnd, STDIN_FILENO);
    ::posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (::posix_spawn(&m_process, shell, &files, &attributes, arguments, noEnvironment) != 0) {
        m_process = 0;
    }
    ::posix_spawn_file_actions_destroy(&files);
    ::posix_spawnattr_destroy(&attributes);
}

GroupWatcher::~GroupWatcher()
{
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    if (m_pipe >= 0) {
        ::close(m_pipe);
    }
}

} // namespace znJobs
