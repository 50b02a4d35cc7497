#include "standalone/reading/CopiedProcess.h"

#include "protocol/ExitCode.h"
#include "standalone/launch/LaunchSocket.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::reading
{

std::unique_ptr<CopiedProcess> CopiedProcess::start(const QString& socket, const QStringList& words)
{
    const int server = socket.isEmpty() ? -1 : zn::launch::connectedTo(QFile::encodeName(socket).constData());
    if (server < 0)
        return nullptr;
    std::unique_ptr<CopiedProcess> process(new CopiedProcess(server));
    constexpr timeval patience{5, 0};
    setsockopt(server, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    protocol::LaunchRequest request{QFile::encodeName(QDir::currentPath()).toStdString(), {}, {}};
    for (const QString& word : words)
        request.arguments.push_back(word.toStdString());
    for (char** variable = environ; *variable; ++variable)
        request.environment.emplace_back(*variable);
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    const bool isSent = zn::launch::send(server, request, {nothing, nothing, nothing});
    close(nothing);
    return isSent ? std::move(process) : nullptr;
}

CopiedProcess::~CopiedProcess()
{
    close(m_server);
}

std::optional<int> CopiedProcess::exitCode() const
{
    int status = 0;
    if (recv(m_server, &status, sizeof status, 0) != sizeof status)
        return std::nullopt;
    return WIFSIGNALED(status) ? protocol::exitCodeOfSignal(WTERMSIG(status)) : WEXITSTATUS(status);
}

std::optional<int> CopiedProcess::kill() const
{
    constexpr unsigned char signal = SIGKILL;
    (void)!send(m_server, &signal, 1, MSG_NOSIGNAL);
    return exitCode();
}

} // namespace zn::reading
