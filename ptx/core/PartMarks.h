#pragma once

#include "ptx/core/FileBeside.h"

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

    bool isOpen() const { return m_file.isOpen(); }
    /// Why it is not open.
    const std::string& trouble() const { return m_file.trouble(); }
    void set(std::size_t part, char mark) const;

private:
    FileBeside m_file;
};

} // namespace ptx::core
