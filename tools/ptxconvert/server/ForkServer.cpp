#include "tools/ptxconvert/server/ForkServer.h"

#include "protocol/LaunchRequest.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

namespace ptxconvert
{

namespace
{

using Streams = std::array<int, protocol::LaunchedStreams>;

/// A launcher, and the process that was forked for it.
struct Client {
    int socket = -1;
    pid_t process = 0; ///< 0 before its request has come
};

int listening(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return -1;
    }
    std::memcpy(address.sun_path, path.c_str(), path.size());
    const int socket = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const mode_t mask = umask(0077);
    const bool isBound = bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    umask(mask);
    return isBound && listen(socket, SOMAXCONN) == 0 ? socket : -1;
}

/// The descriptors of a message, which belong to the receiver from now on; nothing if they are not as many as wanted.
std::optional<Streams> streamsOf(msghdr& message)
{
    Streams streams{};
    const cmsghdr* const header = CMSG_FIRSTHDR(&message);
    if (!header || header->cmsg_type != SCM_RIGHTS || header->cmsg_len != CMSG_LEN(sizeof streams))
        return std::nullopt;
    std::memcpy(streams.data(), CMSG_DATA(header), sizeof streams);
    return streams;
}

class Server
{
public:
    Server(int socket, const ForkedWork& work) : m_socket(socket), m_work(work)
    {
        sigemptyset(&m_ends);
        sigaddset(&m_ends, SIGCHLD);
        sigprocmask(SIG_BLOCK, &m_ends, &m_mask);
        m_signals = signalfd(-1, &m_ends, SFD_CLOEXEC | SFD_NONBLOCK);
    }

    int run()
    {
        for (;;) {
            std::vector<pollfd> sources{{m_socket, POLLIN, 0}, {m_signals, POLLIN, 0}};
            for (const Client& client : m_clients)
                sources.push_back({client.socket, POLLIN, 0});
            if (poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR)
                return errno;
            if (sources[1].revents != 0)
                tellEnds();
            // Those that have come since the list was made wait for the next turn.
            for (std::size_t i = 2; i < sources.size(); ++i)
                if (sources[i].revents != 0)
                    hear(sources[i].fd);
            if (sources[0].revents != 0)
                admit();
        }
    }

private:
    std::vector<Client>::iterator clientAt(int socket)
    {
        return std::find_if(m_clients.begin(), m_clients.end(),
                            [socket](const Client& client) { return client.socket == socket; });
    }

    void admit()
    {
        if (const int socket = accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); socket >= 0)
            m_clients.push_back({socket, 0});
    }

    void tellEnds()
    {
        signalfd_siginfo signal{};
        while (read(m_signals, &signal, sizeof signal) > 0) {
        }
        siginfo_t end{};
        while (waitid(P_ALL, 0, &end, WEXITED | WNOHANG | WNOWAIT) == 0 && end.si_pid > 0) {
            // What it left behind; until the process is collected, its number and its group's are nobody else's.
            const pid_t ended = std::exchange(end.si_pid, 0);
            kill(-ended, SIGKILL);
            int status = 0;
            waitpid(ended, &status, 0);
            const auto client = std::find_if(m_clients.begin(), m_clients.end(),
                                             [ended](const Client& each) { return each.process == ended; });
            if (client == m_clients.end())
                continue;
            (void)!send(client->socket, &status, sizeof status, MSG_NOSIGNAL);
            forget(client);
        }
    }

    void forget(std::vector<Client>::iterator client)
    {
        close(client->socket);
        m_clients.erase(client);
    }

    void hear(int socket)
    {
        const auto client = clientAt(socket);
        if (client == m_clients.end())
            return;
        if (client->process == 0)
            return receive(client);
        unsigned char signal = 0;
        const ssize_t size = recv(socket, &signal, 1, 0);
        if (size == 1) {
            kill(-client->process, signal);
        } else if (size == 0 || errno != EAGAIN) {
            kill(-client->process, SIGKILL);
            forget(client);
        }
    }

    void receive(std::vector<Client>::iterator client)
    {
        std::string bytes(protocol::MostBytesOfLaunch, '\0');
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(Streams))] = {};
        iovec content{bytes.data(), bytes.size()};
        msghdr message{};
        message.msg_iov = &content;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        const ssize_t size = recvmsg(client->socket, &message, MSG_CMSG_CLOEXEC);
        const std::optional<Streams> streams = size > 0 ? streamsOf(message) : std::nullopt;
        const auto request =
            protocol::decodedLaunch({bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))});
        if (streams && request)
            client->process = fork(*request, *streams);
        if (streams)
            std::for_each(streams->begin(), streams->end(), close);
        if (client->process <= 0)
            forget(client);
    }

    pid_t fork(const protocol::LaunchRequest& request, const Streams& streams)
    {
        const pid_t server = getpid();
        const pid_t child = ::fork();
        if (child == 0)
            become(request, streams, server);
        if (child > 0)
            setpgid(child, child);
        return child;
    }

    /// Leaves nothing of the server to the process but what it has in memory.
    [[noreturn]] void become(const protocol::LaunchRequest& request, const Streams& streams, pid_t server)
    {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != server)
            _exit(1); // it died before the line above
        for (std::size_t i = 0; i < streams.size(); ++i)
            dup2(streams[i], static_cast<int>(i));
        for (const Client& client : m_clients)
            close(client.socket);
        close(m_socket);
        close(m_signals);
        sigprocmask(SIG_SETMASK, &m_mask, nullptr);
        clearenv();
        for (const std::string& variable : request.environment)
            putenv(const_cast<char*>(variable.c_str()));
        if (chdir(request.folder.c_str()) != 0)
            _exit(1);
        std::exit(m_work(request.arguments));
    }

    int m_socket;
    const ForkedWork& m_work;
    sigset_t m_ends{};
    sigset_t m_mask{}; ///< of before
    int m_signals = -1;
    std::vector<Client> m_clients;
};

} // namespace

int serve(const std::string& socket, const ForkedWork& work)
{
    const int descriptor = listening(socket);
    return descriptor < 0 ? errno : Server(descriptor, work).run();
}

} // namespace ptxconvert
