#pragma once

#include <sys/types.h>

namespace znJobs
{

/// A small process that ends a process group with this process, however this process ends.
///
/// The death signal of a child reaches the child alone: of a shell or a launcher the converter behind it would go on.
/// The watcher is a shell that waits for the end of a pipe, which this process alone holds open. It stands in the group
/// itself, so that the group's number cannot come to mean another group before the watcher uses it, and goes with the
/// group when that is killed.
class GroupWatcher
{
public:
    /// Watches `group`, which has to exist. Without a shell or a free descriptor nothing is watched.
    explicit GroupWatcher(pid_t group);

    /// Ends the watcher, not the group.
    ~GroupWatcher();

    GroupWatcher(const GroupWatcher&) = delete;
    GroupWatcher& operator=(const GroupWatcher&) = delete;

private:
    void spawn(pid_t group, int pipeEnd);

    int m_pipe = -1;
    pid_t m_process = 0;
};

} // namespace znJobs
