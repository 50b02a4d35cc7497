#pragma once

#include "protocol/LaunchRequest.h"

#include <array>

/// The way of a launcher to the server that forks the process it stands for.
namespace zn::launch
{

/// A connection to the server at the socket `path`, which the caller closes; -1 without one.
int connectedTo(const char* path);

/// Sends `request` with the descriptors of standard input, output and error. False where the server is gone or a
/// message cannot hold the request.
bool send(int server, const protocol::LaunchRequest& request,
          const std::array<int, protocol::LaunchedStreams>& streams);

} // namespace zn::launch
