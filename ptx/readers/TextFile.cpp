#include "ptx/readers/TextFile.h"

#include "ptx/readers/PackedFile.h"

namespace ptx::readers
{

TextFile::TextFile(const std::string& path) : m_file(path), m_isPacked(packed::isPacked(m_file.text()))
{
    if (!m_isPacked)
        return;
    core::Outcome<std::string> content = packed::content(path);
    if (content)
        m_unpacked = std::move(content.value());
    else
        m_trouble = content.failure();
}

} // namespace ptx::readers
