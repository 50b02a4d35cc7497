#pragma once

#include "ptx/core/FileDescriptor.h"

#include <cstddef>
#include <string>

namespace ptx::core
{

/// A file with one letter for each part of the work, true at every moment: whoever finds the process dead reads in it
/// what was at work. Any thread may write, signal handlers too.
class PartMarks
{
public:
    /// Starts `path` anew with the letters `marks`; those behind them may be set later.
    PartMarks(const std::string& path, const std::string& marks);

    bool isOpen() const { return static_cast<bool>(m_file); }
    void set(std::size_t part, char mark) const;

private:
    FileDescriptor m_file;
};

} // namespace ptx::core
