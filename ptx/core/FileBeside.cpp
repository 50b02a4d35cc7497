#include "ptx/core/FileBeside.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace ptx::core
{

namespace
{

/// Whoever owns a folder may exchange any file in it anyway, and file systems that know of one user alone tell the same
/// one for the folder.
bool isForeign(const struct stat& file, const std::string& path)
{
    if (file.st_uid == ::geteuid())
        return false;
    const std::string folder = std::filesystem::path(path).parent_path().string();
    struct stat around {
    };
    return ::stat(folder.empty() ? "." : folder.c_str(), &around) != 0 || file.st_uid != around.st_uid;
}

/// What is in the way; nothing where the file may be written.
const char* obstacle(const struct stat& file, const std::string& path)
{
    if (S_ISLNK(file.st_mode))
        return "a link is in the way";
    if (S_ISDIR(file.st_mode))
        return "a folder is in the way";
    if (S_ISFIFO(file.st_mode))
        return "a pipe is in the way";
    if (!S_ISREG(file.st_mode))
        return "something that is no file is in the way";
    return isForeign(file, path) ? "another user's file is in the way" : nullptr;
}

/// It may come and go between the two looks, which is no accident any more when it happens again and again.
int openOrMake(const char* path, int flags, mode_t mode)
{
    constexpr int mostTries = 8;
    int descriptor = -1;
    for (int i = 0; i < mostTries; ++i) {
        descriptor = ::open(path, flags);
        if (descriptor >= 0 || errno != ENOENT)
            return descriptor;
        descriptor = ::open(path, flags | O_CREAT | O_EXCL, mode);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return descriptor;
}

std::string troubleWith(const std::string& path, const char* why)
{
    return "cannot write " + path + ": " + why;
}

} // namespace

FileBeside::FileBeside(const std::string& path, Content content, int flags, mode_t mode)
{
    struct stat status {
    };
    FileDescriptor file(openOrMake(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags, mode));
    const int error = errno;
    // What could not be opened is named by what stands there.
    const bool isKnown = (file ? ::fstat(file.get(), &status) : ::lstat(path.c_str(), &status)) == 0;
    const char* const inTheWay = isKnown ? obstacle(status, path) : nullptr;
    if (inTheWay || !file)
        m_trouble = troubleWith(path, inTheWay ? inTheWay : std::strerror(error));
    else if (content == Content::Dropped && ::ftruncate(file.get(), 0) != 0)
        m_trouble = troubleWith(path, std::strerror(errno));
    else
        m_file = std::move(file);
}

} // namespace ptx::core
