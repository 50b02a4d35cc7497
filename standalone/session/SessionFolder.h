#pragma once

#include <QString>

#include <optional>

namespace zn
{

/// The folder for a session's temporary files: for the user alone, with a name that nobody can guess, gone with the
/// session. A lock in it tells other sessions that somebody lives; of those that were killed the next one that begins
/// takes the folder away.
class SessionFolder
{
public:
    /// Why no session can begin: the folder for temporary files (the variable TMPDIR, /tmp without it) takes no folder.
    static std::optional<QString> trouble();

    /// Makes the folder; ends the program when it cannot be made (see trouble()).
    SessionFolder();
    ~SessionFolder();
    SessionFolder(const SessionFolder&) = delete;
    SessionFolder& operator=(const SessionFolder&) = delete;

    const QString& path() const { return m_path; }
    /// Removes the folder and all that is in it.
    void remove();

private:
    QString m_path;
    int m_lock = -1; ///< descriptor
};

} // namespace zn
