#pragma once

#include <csignal>
#include <sys/resource.h>

/// While it lives, files of this process and of those that it starts cannot grow beyond a size, as on a full disk.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes) : m_former(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit small = {bytes, m_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_former);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    void (*m_former)(int);
    rlimit m_limit = {};
};
