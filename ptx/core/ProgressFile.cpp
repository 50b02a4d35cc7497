#include "ptx/core/ProgressFile.h"

#include <fcntl.h>

#include <cstdio>

namespace ptx::core
{

ProgressFile::ProgressFile(const std::string& path) : m_file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666))
{
}

void ProgressFile::write(int percent, Stage stage)
{
    if (!m_file || (percent == m_percent && stage == m_stage))
        return;
    char text[Length + 1];
    std::snprintf(text, sizeof text, "%-4d\n%-24s\n", percent, stageWord(stage));
    if (::pwrite(m_file.get(), text, Length, 0) != Length)
        return; // tried again with the next change
    m_percent = percent;
    m_stage = stage;
}

} // namespace ptx::core
