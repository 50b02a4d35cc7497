#include "ptx/readers/step/CountingBuffer.h"

#include <algorithm>

namespace ptx
{

namespace
{
constexpr std::size_t BlockSize = std::size_t{64} * 1024;
constexpr double SecondsPerByte = 0.05e-6;
} // namespace

CountingBuffer::CountingBuffer(const std::string& path, std::uint64_t size, double share, core::Progress& progress)
    : m_block(BlockSize), m_size(std::max<std::uint64_t>(1, size)), m_share(share), m_progress(progress)
{
    m_file.open(path, std::ios::in | std::ios::binary);
}

CountingBuffer::int_type CountingBuffer::underflow()
{
    const std::streamsize count = m_file.sgetn(m_block.data(), static_cast<std::streamsize>(m_block.size()));
    if (count <= 0) {
        if (!m_timedProgress)
            m_timedProgress.emplace(m_progress, m_share, 1 + SecondsPerByte * static_cast<double>(m_size));
        return traits_type::eof();
    }
    m_done += static_cast<std::uint64_t>(count);
    m_progress.report(m_share * static_cast<double>(m_done) / static_cast<double>(m_size));
    setg(m_block.data(), m_block.data(), m_block.data() + count);
    return traits_type::to_int_type(*gptr());
}

} // namespace ptx
