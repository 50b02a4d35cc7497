#pragma once

#include "ptx/core/FileDescriptor.h"

#include <cstddef>
#include <string>

namespace ptx::tessellation
{

/// The file of part marks. All parts wait at first. Any thread may write.
class PartMarks
{
public:
    PartMarks(const std::string& path, std::size_t parts);

    bool isOpen() const { return static_cast<bool>(m_file); }
    /// `mark` is one of `protocol::partmark`.
    void set(std::size_t part, char mark) const;

private:
    core::FileDescriptor m_file;
};

} // namespace ptx::tessellation
