#pragma once

#include "host/HostExport.h"

#include <string>

/// Questions about files and their names. Paths are UTF-8 and may use slashes, backslashes or both as separators, as
/// documents from other systems do; only `exists` and `remove` look at the disk, and they take a path as it stands.
class ZN_HOST_EXPORT znFile
{
public:
    /// Whether something is at `path`; a link counts by what it leads to, an empty path as nothing.
    /// With `onlyFiles` a folder does not count, with `onlyReadable` only what this process may read does.
    static bool exists(const std::string& path, bool onlyFiles, bool onlyReadable);

    /// Removes a file or a link. What cannot be removed, an empty path and a folder stay without a word.
    static void remove(const std::string& path);

    /// A folder for temporary files, without a separator at its end: that of the session, which goes with it, or that
    /// of the system when there is no session.
    static std::string getTmpDir();

    /// `path` with a slash for each backslash and for each run of separators. Two at its very beginning, which name a
    /// computer of the network, stay two.
    static std::string convertSeparators(const std::string& path);

    /// What follows the last dot of the file's name, as it is written; empty if there is no dot, or only one that the
    /// name begins with.
    static std::string getExtension(const std::string& path);

    /// The file's name without folder, and without extension and the dot before it.
    static std::string getBaseName(const std::string& path);
};
