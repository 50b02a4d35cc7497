#include "ptx/core/PartMarks.h"

#include <unistd.h>

namespace ptx::core
{

PartMarks::PartMarks(const std::string& path, const std::string& marks)
    : m_file(path, FileBeside::Content::Dropped, 0, 0600)
{
    [[maybe_unused]] const auto written = ::pwrite(m_file.get(), marks.data(), marks.size(), 0);
}

void PartMarks::set(std::size_t part, char mark) const
{
    [[maybe_unused]] const auto written = ::pwrite(m_file.get(), &mark, 1, static_cast<off_t>(part));
}

} // namespace ptx::core
