#pragma once

#include "ptx/core/FileDescriptor.h"

#include <sys/types.h>

#include <string>

namespace ptx::core
{

/// A file under a name that follows from the output's, open for reading and writing: the log, the progress file, the
/// marks of parts. In a folder that others write to as well anybody may have put something there before.
///
/// What is not there is made, and nobody else can make it at the same moment. What is there is taken when it is a
/// regular file of this user or of whose folder it is: no link is followed, nobody else's file is written, no pipe is
/// waited for.
class FileBeside
{
public:
    /// What becomes of the content of a file that is there.
    enum class Content { Kept, Dropped };

    /// `flags` of open(2) come on top; `mode` is that of a new file, before the umask.
    FileBeside(const std::string& path, Content content, int flags = 0, mode_t mode = 0666);

    bool isOpen() const { return static_cast<bool>(m_file); }
    int get() const { return m_file.get(); }
    /// Why it is not open, in a sentence with its path; empty when it is.
    const std::string& trouble() const { return m_trouble; }

private:
    FileDescriptor m_file;
    std::string m_trouble;
};

} // namespace ptx::core
