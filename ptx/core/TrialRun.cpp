#include "ptx/core/TrialRun.h"

#include "ptx/core/FileDescriptor.h"
#include "ptx/core/ProcessEnd.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <new>
#include <optional>

namespace ptx::core
{

namespace
{

constexpr std::size_t MostCrashes = 200;
constexpr int LookInterval = 100; // ms

/// A number that a process and its copies share.
class SharedNumber
{
public:
    SharedNumber()
        : m_memory(::mmap(nullptr, sizeof(Number), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (m_memory == MAP_FAILED)
            throw std::bad_alloc();
        new (m_memory) Number(0);
    }
    ~SharedNumber() { ::munmap(m_memory, sizeof(Number)); }
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;

    std::atomic<std::size_t>& operator*() { return *static_cast<Number*>(m_memory); }

private:
    using Number = std::atomic<std::size_t>;
    void* m_memory;
};

class TrialRun
{
public:
    TrialRun(std::size_t count, const std::function<void(std::size_t)>& work, Progress& progress)
        : m_count(count), m_work(work), m_progress(progress)
    {
    }

    std::vector<std::size_t> run()
    {
        std::vector<std::size_t> crashes;
        while (*m_next < m_count && crashes.size() < MostCrashes) {
            const int status = runCopy();
            if (!WIFSIGNALED(status) || !processend::isCrash(WTERMSIG(status)))
                break;
            crashes.push_back((*m_next)++);
        }
        return crashes;
    }

private:
    /// @return as waitpid tells it; 0 if there was no copy
    int runCopy()
    {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            return 0;
        const FileDescriptor ours(ends[0]);
        std::optional<FileDescriptor> theirs(std::in_place, ends[1]);
        const pid_t parent = ::getpid();
        const pid_t copy = ::fork();
        if (copy == 0)
            work(parent);
        theirs.reset();
        if (copy < 0)
            return 0;
        awaitEnd(ours.get());
        int status = 0;
        ::waitpid(copy, &status, 0);
        return status;
    }

    [[noreturn]] void work(pid_t parent)
    {
        processend::forget();
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::prctl(PR_SET_DUMPABLE, 0);
        if (::getppid() != parent)
            ::_exit(1); // it died before the lines above
        for (std::atomic<std::size_t>& next = *m_next; next < m_count; ++next) {
            try {
                m_work(next);
            } catch (...) { // NOLINT(bugprone-empty-catch): the work itself meets it again
            }
        }
        ::_exit(0);
    }

    /// The other end of the pipe closes with the copy.
    void awaitEnd(int pipe)
    {
        std::size_t seen = *m_next;
        pollfd source{pipe, POLLIN, 0};
        while (::poll(&source, 1, LookInterval) <= 0)
            if (const std::size_t now = *m_next; now != seen) {
                seen = now;
                m_progress.touch();
            }
    }

    std::size_t m_count;
    const std::function<void(std::size_t)>& m_work;
    Progress& m_progress;
    SharedNumber m_next;
};

} // namespace

std::vector<std::size_t> crashesOf(std::size_t count, const std::function<void(std::size_t)>& work, Progress& progress)
{
    return TrialRun(count, work, progress).run();
}

} // namespace ptx::core
