#include "standalone/launch/LaunchSocket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

namespace zn::launch
{

int connectedTo(const char* path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (std::strlen(path) >= sizeof address.sun_path)
        return -1;
    std::strcpy(address.sun_path, path);
    const int server = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    if (connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return server;
    close(server);
    return -1;
}

bool send(int server, const protocol::LaunchRequest& request, const std::array<int, protocol::LaunchedStreams>& streams)
{
    std::string bytes = protocol::encoded(request);
    if (bytes.size() > protocol::MostBytesOfLaunch)
        return false;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof streams)] = {};
    iovec content{bytes.data(), bytes.size()};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof streams);
    std::memcpy(CMSG_DATA(header), streams.data(), sizeof streams);
    return sendmsg(server, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

} // namespace zn::launch
