#pragma once

#include "files/FileBytes.h"

#include <vector>

namespace files::vrml
{

/// The text of one file, and what is to be told about places in it. A place is the number of bytes before it.
class Source
{
public:
    /// Reads the file, unpacks it if it is packed, and checks its first line. Fails through `task`, which outlives the
    /// source.
    Source(ReadTask& task, const QString& path);

    const QString& path() const { return m_path; }
    std::string_view text() const { return m_bytes.text(); }
    ReadTask& task() const { return m_task; }

    [[noreturn]] void fail(ErrorCode code, const QString& message, std::size_t offset) const;
    void warn(const QString& message, std::size_t offset) const;
    /// "line 12, column 3"; both count from 1, columns in bytes.
    QString place(std::size_t offset) const;

private:
    void checkHeader() const;

    ReadTask& m_task;
    QString m_path;
    FileBytes m_bytes;
    mutable std::vector<std::uint64_t> m_linesBefore; ///< each block of the text
};

/// `text` as it is if that is UTF-8, otherwise taken for Latin-1.
std::string toUtf8(std::string_view text);

/// `text` for a message, cut when it is long.
QString quoted(std::string_view text);

} // namespace files::vrml
