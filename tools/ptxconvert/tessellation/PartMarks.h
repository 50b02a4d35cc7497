#pragma once

#include "tools/ptxconvert/core/FileDescriptor.h"

#include <cstddef>
#include <string>

namespace ptx
{

/// A file with one byte for each part, which is true at every moment: whoever finds this process dead reads in it which
/// parts were at work. Any thread may write.
class PartMarks
{
public:
    static constexpr char Waits = '.';
    static constexpr char Started = 's';
    static constexpr char Ended = 'e';

    PartMarks(const std::string& path, std::size_t parts);

    bool isOpen() const { return static_cast<bool>(m_file); }
    void set(std::size_t part, char mark) const;

private:
    FileDescriptor m_file;
};

} // namespace ptx
