#include "ptx/core/Log.h"

#include "protocol/FileNames.h"
#include "protocol/Printable.h"

#include <fcntl.h>

#include <algorithm>
#include <cstdio>

namespace ptx::core
{

namespace
{

// Names of a hostile file must not forge lines, nor reach the terminal of who reads them.
std::string onOneLine(std::string_view text)
{
    std::string result(text);
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return protocol::printableLine(result);
}

} // namespace

Log::Log(const std::string& path) : Log(path, FileBeside::Content::Dropped, std::chrono::steady_clock::now()) {}

Log::Log(const std::string& path, std::chrono::steady_clock::time_point begun)
    : Log(path, FileBeside::Content::Kept, begun)
{
}

Log::Log(const std::string& path, FileBeside::Content content, std::chrono::steady_clock::time_point start)
    : m_file(path, content, O_APPEND), m_start(start)
{
}

void Log::info(std::string_view text)
{
    const std::lock_guard lock(m_mutex);
    line("", text);
}

void Log::warning(std::string_view text)
{
    const std::lock_guard lock(m_mutex);
    ++m_warnings;
    if (m_warnings <= MostWarnings)
        line("Warning: ", text);
    else if (m_warnings == MostWarnings + 1)
        line("Warning: ", "further warnings are counted, not listed");
}

void Log::error(std::string_view text)
{
    const std::lock_guard lock(m_mutex);
    write(protocol::LogErrorMark + onOneLine(text));
}

int Log::warnings() const
{
    const std::lock_guard lock(m_mutex);
    return m_warnings;
}

double Log::seconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
}

void Log::line(std::string_view kind, std::string_view text)
{
    char time[32];
    std::snprintf(time, sizeof time, "%9.3f s  ", seconds());
    write(time + std::string(kind) + onOneLine(text));
}

void Log::write(const std::string& text)
{
    if (!isOpen())
        return;
    const std::string whole = text + '\n';
    [[maybe_unused]] const auto written = ::write(m_file.get(), whole.data(), whole.size());
}

} // namespace ptx::core
