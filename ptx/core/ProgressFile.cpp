#include "ptx/core/ProgressFile.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace ptx::core
{

ProgressFile::ProgressFile(const std::string& path) : m_file(path, FileBeside::Content::Kept) {}

int ProgressFile::percent() const
{
    char text[Length + 1] = {};
    const bool isRead = isOpen() && ::pread(m_file.get(), text, Length, 0) > 0;
    return isRead ? std::atoi(text) : 0;
}

void ProgressFile::write(int percent, Stage stage)
{
    if (!isOpen() || (percent == m_percent && stage == m_stage))
        return;
    char text[Length + 1];
    std::snprintf(text, sizeof text, "%-4d\n%-24s\n", percent, stageWord(stage));
    if (::pwrite(m_file.get(), text, Length, 0) != Length)
        return; // tried again with the next change
    m_percent = percent;
    m_stage = stage;
}

} // namespace ptx::core
