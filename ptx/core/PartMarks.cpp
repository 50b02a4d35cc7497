#include "ptx/tessellation/PartMarks.h"

#include "protocol/FileNames.h"

#include <fcntl.h>
#include <unistd.h>

namespace ptx::tessellation
{

PartMarks::PartMarks(const std::string& path, std::size_t parts)
    : m_file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600))
{
    for (std::size_t i = 0; i < parts; ++i)
        set(i, protocol::partmark::Waits);
}

void PartMarks::set(std::size_t part, char mark) const
{
    [[maybe_unused]] const auto written = ::pwrite(m_file.get(), &mark, 1, static_cast<off_t>(part));
}

} // namespace ptx::tessellation
