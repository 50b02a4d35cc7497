#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ptx::readers
{

/// A file as memory, for a look at it that copies nothing.
class MappedFile
{
public:
    /// A file that cannot be read has an empty text.
    explicit MappedFile(const std::string& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// Valid as long as this object.
    std::string_view text() const { return {static_cast<const char*>(m_data), m_size}; }

private:
    void* m_data = nullptr;
    std::size_t m_size = 0;
};

} // namespace ptx::readers
