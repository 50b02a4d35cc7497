#pragma once

#include "files/SceneReader.h"

#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

/// What the programs that fuzz readers of whole files share.
namespace fuzzing
{

inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// A file in memory, under a name without an extension.
class InputFile
{
public:
    InputFile() : m_file(memfd_create("input", MFD_CLOEXEC)) { require(m_file >= 0); }

    void write(const std::uint8_t* data, std::size_t size) const
    {
        require(ftruncate(m_file, 0) == 0 && pwrite(m_file, data, size, 0) == static_cast<ssize_t>(size));
    }

    QString name() const { return QStringLiteral("/proc/self/fd/%1").arg(m_file); }

private:
    int m_file;
};

/// Small enough for a small memory and a short time.
inline files::ReadOptions limits()
{
    files::ReadOptions options;
    options.limits.maxFileBytes = 1 << 22;
    options.limits.maxNodes = 1 << 13;
    options.limits.maxVertices = 1 << 20;
    return options;
}

} // namespace fuzzing
