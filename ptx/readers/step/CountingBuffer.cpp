#include "ptx/readers/step/CountingBuffer.h"

namespace ptx
{

namespace
{
constexpr std::size_t BlockSize = std::size_t{64} * 1024;
constexpr double SecondsPerByte = 0.05e-6;
} // namespace

CountingBuffer::CountingBuffer(std::string_view text, double share, core::Progress& progress)
    : m_text(text), m_share(share), m_progress(progress)
{
}

CountingBuffer::int_type CountingBuffer::underflow()
{
    const auto size = static_cast<double>(m_text.size());
    const std::string_view block = m_text.substr(m_done, BlockSize);
    if (block.empty()) {
        if (!m_timedProgress)
            m_timedProgress.emplace(m_progress, m_share, 1 + SecondsPerByte * size);
        return traits_type::eof();
    }
    m_done += block.size();
    m_progress.report(m_share * static_cast<double>(m_done) / size);
    // The stream only reads.
    char* const start = const_cast<char*>(block.data());
    setg(start, start, start + block.size());
    return traits_type::to_int_type(*gptr());
}

} // namespace ptx
