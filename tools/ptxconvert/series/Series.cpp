#include "tools/ptxconvert/series/Series.h"

#include "protocol/ExitCode.h"
#include "protocol/Printable.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>

namespace ptxconvert
{

namespace
{

using Clock = std::chrono::steady_clock;

/// An item at work.
struct Run {
    std::size_t item = 0;
    int errors = -1; ///< a file without a name, its standard error
    Clock::time_point start;
};

void writeAll(int target, int source)
{
    std::array<char, 4096> block{};
    ssize_t size = 0;
    lseek(source, 0, SEEK_SET);
    while ((size = read(source, block.data(), block.size())) > 0)
        (void)!write(target, block.data(), static_cast<std::size_t>(size));
}

class Series
{
public:
    Series(const std::vector<SeriesItem>& items, unsigned most, const SeriesWork& work)
        : m_items(items), m_most(most), m_work(work), m_codes(items.size())
    {
        sigemptyset(&m_signals);
        for (const int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP})
            sigaddset(&m_signals, signal);
        sigprocmask(SIG_BLOCK, &m_signals, &m_mask);
    }
    ~Series() { sigprocmask(SIG_SETMASK, &m_mask, nullptr); }
    Series(const Series&) = delete;
    Series& operator=(const Series&) = delete;

    int run()
    {
        for (startNext(); !m_runs.empty(); startNext()) {
            const int signal = sigwaitinfo(&m_signals, nullptr);
            if (signal == SIGCHLD)
                collect();
            else if (signal > 0)
                stop();
        }
        return tellEnd();
    }

private:
    void startNext()
    {
        for (; !m_isStopped && m_next < m_items.size() && m_runs.size() < m_most; ++m_next)
            start(m_next);
    }

    void start(std::size_t item)
    {
        const int errors = memfd_create("errors", MFD_CLOEXEC);
        std::fflush(stdout); // the copy would write it again
        const pid_t parent = getpid();
        const pid_t child = errors < 0 ? -1 : fork();
        if (child == 0)
            become(item, errors, parent);
        if (child > 0) {
            m_runs[child] = {item, errors, Clock::now()};
            return;
        }
        protocol::print(stderr, "ptxconvert: " + m_items[item].input + ": " + std::strerror(errno) + '\n');
        if (errors >= 0)
            close(errors);
        tell(item, protocol::number(protocol::ExitCode::MemoryLimit), 0);
    }

    [[noreturn]] void become(std::size_t item, int errors, pid_t parent)
    {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent)
            _exit(protocol::number(protocol::ExitCode::Cancelled)); // it died before the line above
        dup2(errors, STDERR_FILENO);
        for (const auto& [child, run] : m_runs)
            close(run.errors);
        sigprocmask(SIG_SETMASK, &m_mask, nullptr);
        std::exit(m_work(m_items[item]));
    }

    void collect()
    {
        int status = 0;
        for (pid_t child = 0; (child = waitpid(-1, &status, WNOHANG)) > 0;) {
            const auto found = m_runs.find(child);
            if (found == m_runs.end())
                continue;
            const Run run = found->second;
            m_runs.erase(found);
            writeAll(STDERR_FILENO, run.errors);
            close(run.errors);
            tell(run.item, WIFSIGNALED(status) ? protocol::exitCodeOfSignal(WTERMSIG(status)) : WEXITSTATUS(status),
                 std::chrono::duration<double>(Clock::now() - run.start).count());
        }
    }

    void stop()
    {
        m_isStopped = true;
        for (const auto& [child, run] : m_runs)
            kill(child, SIGTERM);
    }

    void tell(std::size_t item, int code, double seconds)
    {
        m_codes[item] = code;
        std::printf("%4d %9.2f  %s\n", code, seconds, protocol::printableLine(m_items[item].input).c_str());
        std::fflush(stdout);
    }

    int tellEnd() const
    {
        std::size_t converted = 0;
        int worst = 0;
        for (const std::optional<int>& code : m_codes) {
            converted += code == 0 ? 1 : 0;
            worst = worst == 0 ? code.value_or(0) : worst;
        }
        std::printf("%zu of %zu files converted\n", converted, m_items.size());
        return m_isStopped ? protocol::number(protocol::ExitCode::Cancelled) : worst;
    }

    const std::vector<SeriesItem>& m_items;
    std::size_t m_most;
    const SeriesWork& m_work;
    std::vector<std::optional<int>> m_codes; ///< by item; none for one that has not ended
    std::map<pid_t, Run> m_runs;
    std::size_t m_next = 0;
    bool m_isStopped = false;
    sigset_t m_signals{};
    sigset_t m_mask{}; ///< of before
};

} // namespace

int runSeries(const std::vector<SeriesItem>& items, unsigned most, const SeriesWork& work)
{
    return Series(items, most, work).run();
}

} // namespace ptxconvert
