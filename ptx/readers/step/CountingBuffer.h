#pragma once

#include "ptx/core/Progress.h"
#include "ptx/core/TimedProgress.h"

#include <optional>
#include <streambuf>
#include <string_view>

namespace ptx
{

/// Gives a text and reports how much of it went by, because OCCT says nothing while it reads. When all of it went by,
/// OCCT is still at work on it for a while: then the progress creeps on until the buffer goes.
class CountingBuffer : public std::streambuf
{
public:
    /// `text` outlives this object. `share` is the part of the present stage that the reading stands for.
    CountingBuffer(std::string_view text, double share, core::Progress& progress);

protected:
    int_type underflow() override;

private:
    std::string_view m_text;
    std::size_t m_done = 0;
    double m_share;
    core::Progress& m_progress;
    std::optional<core::TimedProgress> m_timedProgress;
};

} // namespace ptx
