#pragma once

#include "ptx/core/Progress.h"
#include "ptx/core/TimedProgress.h"

#include <cstdint>
#include <fstream>
#include <optional>
#include <streambuf>
#include <string>
#include <vector>

namespace ptx
{

/// Reads a file and reports how much of it went by, because OCCT says nothing while it reads. When all of it went
/// by, OCCT is still at work on it for a while: then the progress creeps on until the buffer goes.
class CountingBuffer : public std::streambuf
{
public:
    /// `share` is the part of the present stage that the reading stands for.
    CountingBuffer(const std::string& path, std::uint64_t size, double share, core::Progress& progress);

    bool isOpen() const { return m_file.is_open(); }

protected:
    int_type underflow() override;

private:
    std::filebuf m_file;
    std::vector<char> m_block;
    std::uint64_t m_size;
    std::uint64_t m_done = 0;
    double m_share;
    core::Progress& m_progress;
    std::optional<core::TimedProgress> m_timedProgress;
};

} // namespace ptx
