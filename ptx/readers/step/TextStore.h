#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace ptx::step
{

/// Keeps copies of texts, each with a zero behind it, at places that stay.
class TextStore
{
public:
    const char* add(std::string_view text);

private:
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_free = nullptr;
    std::size_t m_left = 0;
};

} // namespace ptx::step
