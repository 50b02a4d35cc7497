#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace protocol
{

/// What a launcher hands to the server that forks the process it stands for: one message, with the descriptors of
/// standard input, output and error. The server answers with the wait status of the process, an int; before that each
/// byte of the launcher is a signal to send. A launcher that hangs up wants the process dead.
struct LaunchRequest {
    std::string folder; ///< to work in
    std::vector<std::string> arguments;
    std::vector<std::string> environment; ///< NAME=VALUE
};

/// How many descriptors come with a request.
inline constexpr std::size_t LaunchedStreams = 3;

/// What a message may take; sockets of this kind carry a little more.
inline constexpr std::size_t MostBytesOfLaunch = 128 * 1024;

/// The message: words that end with a zero byte, which none of them has.
inline std::string encoded(const LaunchRequest& request)
{
    std::string bytes = std::to_string(request.arguments.size()) + '\0' + request.folder + '\0';
    for (const auto* words : {&request.arguments, &request.environment})
        for (const std::string& word : *words)
            bytes.append(word) += '\0';
    return bytes;
}

/// Nothing of what is no such message.
inline std::optional<LaunchRequest> decodedLaunch(std::string_view bytes)
{
    std::vector<std::string> words;
    for (std::size_t end = bytes.find('\0'); end != bytes.npos; end = bytes.find('\0')) {
        words.emplace_back(bytes.substr(0, end));
        bytes.remove_prefix(end + 1);
    }
    if (!bytes.empty() || words.size() < 2 || words[0].empty() || words[0].size() > 6 ||
        words[0].find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    const std::size_t count = std::stoul(words[0]);
    if (count > words.size() - 2)
        return std::nullopt;
    const auto environment = words.begin() + 2 + static_cast<std::ptrdiff_t>(count);
    return LaunchRequest{std::move(words[1]), {words.begin() + 2, environment}, {environment, words.end()}};
}

} // namespace protocol
