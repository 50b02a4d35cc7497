#include "ptx/readers/MappedFile.h"

#include "ptx/core/FileDescriptor.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

namespace ptx::readers
{

MappedFile::MappedFile(const std::string& path)
{
    const core::FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status {
    };
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0)
        return;
    void* data = ::mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (data == MAP_FAILED)
        return;
    m_data = data;
    m_size = static_cast<std::size_t>(status.st_size);
}

MappedFile::~MappedFile()
{
    if (m_data)
        ::munmap(m_data, m_size);
}

} // namespace ptx::readers
