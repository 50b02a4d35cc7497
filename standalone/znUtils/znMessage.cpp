#include "host/znUtils/znMessage.h"

#include <array>

#include <execinfo.h>
#include <unistd.h>

znMessage::znMessage() = default;
znMessage::~znMessage() = default;

znMessage::znMessage(std::uint64_t code, const std::string& key, const boost::any& value) : m_code(code)
{
    m_attributes.emplace(key, value);
}

void znMessage::set(const std::string& key, const boost::any& value, bool replace)
{
    const auto [place, isNew] = m_attributes.emplace(key, value);
    if (!isNew && replace)
        place->second = value;
}

const boost::any& znMessage::get(const std::string& key) const
{
    static const boost::any none;
    const auto found = m_attributes.find(key);
    return found == m_attributes.end() ? none : found->second;
}

void znMessage::printBT()
{
    std::array<void*, 64> frames = {};
    const int depth = backtrace(frames.data(), static_cast<int>(frames.size()));
    std::fflush(stderr);
    // The first frame is this function.
    backtrace_symbols_fd(frames.data() + 1, depth - 1, STDERR_FILENO);
}
