#include "ptx/box/SystemCalls.h"

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace ptx::box
{

namespace
{

/// By name, as libraries and kernels know different ones: a name that this library does not know is passed over.
constexpr const char* Allowed[] = {
    // memory
    "brk", "madvise", "mmap", "mprotect", "mremap", "msync", "munmap", "mincore", "membarrier", "get_mempolicy",
    "mbind",
    // files
    "access", "close", "close_range", "copy_file_range", "creat", "dup", "dup2", "dup3", "faccessat", "faccessat2",
    "fadvise64", "fallocate", "fchmod", "fdatasync", "flock", "fstat", "fstatfs", "fsync", "ftruncate", "getcwd",
    "getdents", "getdents64", "lseek", "lstat", "newfstatat", "open", "openat", "pipe", "pipe2", "poll", "ppoll",
    "pread64", "preadv", "pwrite64", "pwritev", "read", "readahead", "readlink", "readlinkat", "readv", "rename",
    "renameat", "renameat2", "select", "pselect6", "sendfile", "stat", "statfs", "statx", "sync_file_range", "truncate",
    "umask", "unlink", "unlinkat", "write", "writev",
    // processes and threads; copies of this one try work out
    "arch_prctl", "execve", "exit", "exit_group", "fork", "vfork", "futex", "get_robust_list", "set_robust_list",
    "set_tid_address", "rseq", "wait4", "waitid", "getpid", "getppid", "gettid", "getpgid", "getpgrp", "getsid",
    "prctl", "sched_getaffinity", "sched_getparam", "sched_getscheduler", "sched_yield", "sched_get_priority_max",
    "sched_get_priority_min", "getcpu", "restart_syscall",
    // signals to itself
    "rt_sigaction", "rt_sigpending", "rt_sigprocmask", "rt_sigreturn", "rt_sigsuspend", "rt_sigtimedwait",
    "sigaltstack", "pause",
    // time and other questions
    "clock_getres", "clock_gettime", "clock_nanosleep", "gettimeofday", "nanosleep", "time", "times", "timer_create",
    "timer_delete", "timer_settime", "setitimer", "getrandom", "getrlimit", "getrusage", "sysinfo", "uname", "getuid",
    "geteuid", "getgid", "getegid", "getgroups", "capget",
    // tighter rules for what begins anew
    "landlock_create_ruleset", "landlock_add_rule", "landlock_restrict_self", "seccomp"};

/// The C library takes others in their place.
constexpr const char* Unknown[] = {"clone3",       "openat2",     "epoll_create1",
                                   "epoll_pwait2", "futex_waitv", "map_shadow_stack"};

/// Without those by which another process is sent a signal when a file has something to read.
constexpr int AllowedOfFcntl[] = {F_DUPFD, F_DUPFD_CLOEXEC, F_GETFD,  F_SETFD,     F_GETFL,     F_SETFL,
                                  F_GETLK, F_SETLK,         F_SETLKW, F_OFD_GETLK, F_OFD_SETLK, F_OFD_SETLKW};

constexpr scmp_datum_t NewSpaces =
    CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;

class Filter
{
public:
    Filter() : m_context(seccomp_init(SCMP_ACT_ERRNO(EPERM))) {}
    ~Filter()
    {
        if (m_context)
            seccomp_release(m_context);
    }
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

    /// @return an error number; 0 when it holds
    int load()
    {
        if (!m_context)
            return ENOMEM;
        for (const char* name : Allowed)
            add(SCMP_ACT_ALLOW, name);
        for (const char* name : Unknown)
            add(SCMP_ACT_ERRNO(ENOSYS), name);
        keep(
            seccomp_rule_add(m_context, SCMP_ACT_ALLOW, SCMP_SYS(clone), 1, SCMP_A0(SCMP_CMP_MASKED_EQ, NewSpaces, 0)));
        const auto self = static_cast<scmp_datum_t>(::getpid());
        keep(seccomp_rule_add(m_context, SCMP_ACT_ALLOW, SCMP_SYS(tgkill), 1, SCMP_A0(SCMP_CMP_EQ, self)));
        keep(seccomp_rule_add(m_context, SCMP_ACT_ALLOW, SCMP_SYS(kill), 1, SCMP_A0(SCMP_CMP_EQ, self)));
        for (const int command : AllowedOfFcntl)
            keep(seccomp_rule_add(m_context, SCMP_ACT_ALLOW, SCMP_SYS(fcntl), 1,
                                  SCMP_A1(SCMP_CMP_EQ, static_cast<scmp_datum_t>(command))));
        // Limits and cores of this process alone; tightened limits stay so.
        for (const int call : {SCMP_SYS(prlimit64), SCMP_SYS(sched_setaffinity)})
            keep(seccomp_rule_add(m_context, SCMP_ACT_ALLOW, call, 1, SCMP_A0(SCMP_CMP_EQ, 0)));
        // What a terminal is asked for; no characters are put into its input.
        keep(seccomp_rule_add(m_context, SCMP_ACT_ALLOW, SCMP_SYS(ioctl), 1, SCMP_A1(SCMP_CMP_EQ, 0x5401))); // TCGETS
        keep(seccomp_attr_set(m_context, SCMP_FLTATR_CTL_TSYNC, 1));
        return m_error != 0 ? m_error : -seccomp_load(m_context);
    }

private:
    void add(std::uint32_t action, const char* name)
    {
        const int number = seccomp_syscall_resolve_name(name);
        if (number != __NR_SCMP_ERROR)
            keep(seccomp_rule_add(m_context, action, number, 0));
    }

    /// The first fault counts. A call that this machine has not is none.
    void keep(int result)
    {
        if (result < 0 && result != -EDOM && m_error == 0)
            m_error = -result;
    }

    scmp_filter_ctx m_context;
    int m_error = 0;
};

} // namespace

std::optional<std::string> restrictSystemCalls()
{
    const int error = Filter().load();
    if (error == 0)
        return std::nullopt;
    return std::string("the kernel takes no filter of system calls: ") + std::strerror(error);
}

} // namespace ptx::box
