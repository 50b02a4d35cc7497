#pragma once

#include "ptx/core/FileBeside.h"

#include <chrono>
#include <mutex>
#include <string>
#include <string_view>

namespace ptx::core
{

/// The log of one conversion, for a person. Every line is in the file when the call returns, so that a crash loses
/// nothing. Any thread may write.
class Log
{
public:
    /// Warnings beyond this number are counted, not written.
    static constexpr int MostWarnings = 200;

    /// Starts `path` anew. A file that cannot be opened leaves the log without effect; see `isOpen`.
    explicit Log(const std::string& path);
    /// Goes on with the log of a conversion that began at `begun`.
    Log(const std::string& path, std::chrono::steady_clock::time_point begun);

    bool isOpen() const { return m_file.isOpen(); }
    /// Why it is not open.
    const std::string& trouble() const { return m_file.trouble(); }
    /// For signal handlers, which can do no more than `write`.
    int descriptor() const { return m_file.get(); }

    void info(std::string_view text);
    void warning(std::string_view text);
    /// The reason of a failed run: the line starts with "Error: ", and there is one at most in a log.
    void error(std::string_view text);
    int warnings() const;
    double seconds() const;
    std::chrono::steady_clock::time_point start() const { return m_start; }

private:
    Log(const std::string& path, FileBeside::Content content, std::chrono::steady_clock::time_point start);
    void line(std::string_view kind, std::string_view text);
    void write(const std::string& text);

    FileBeside m_file;
    mutable std::mutex m_mutex;
    std::chrono::steady_clock::time_point m_start;
    int m_warnings = 0;
};

} // namespace ptx::core
