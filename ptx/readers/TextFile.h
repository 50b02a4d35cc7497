#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/readers/MappedFile.h"

#include <string>
#include <string_view>

namespace ptx::readers
{

/// A file as memory, or what it holds if it is packed.
class TextFile
{
public:
    /// A file that cannot be read has an empty text.
    explicit TextFile(const std::string& path);

    /// Valid as long as this object.
    std::string_view text() const { return m_isPacked ? std::string_view(m_unpacked) : m_file.text(); }
    /// Why a packed file has no text.
    const core::Trouble& trouble() const { return m_trouble; }

private:
    MappedFile m_file;
    bool m_isPacked = false;
    std::string m_unpacked;
    core::Trouble m_trouble;
};

} // namespace ptx::readers
