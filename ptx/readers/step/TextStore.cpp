#include "ptx/readers/step/TextStore.h"

#include <algorithm>
#include <cstring>

namespace ptx::step
{

namespace
{
constexpr std::size_t BlockSize = std::size_t{1} << 20;
}

const char* TextStore::add(std::string_view text)
{
    if (text.size() >= m_left) {
        m_left = std::max(BlockSize, text.size() + 1);
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(m_left));
        m_free = m_blocks.back().get();
    }
    char* const copy = m_free;
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    m_free += text.size() + 1;
    m_left -= text.size() + 1;
    return copy;
}

} // namespace ptx::step
