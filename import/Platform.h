#pragma once

/// The calls to the operating system that the library makes, under the names they have on Windows.

#if defined(_WIN32)
#    include <windows.h>

#    include <shlwapi.h>

inline bool childProcessHasEnded()
{
    return false; // events alone tell it there
}
#else
/// Lets the thread rest for `milliseconds`, or until there are events to deliver (see Rest.h).
void Sleep(unsigned milliseconds);

/// Whether a child process has ended or was collected since this thread asked last.
bool childProcessHasEnded();

/// 0 when `path` begins at a root: with a slash or a backslash, or with the letter of a drive and a colon.
int PathIsRelativeA(const char* path);

/// The place within `path` behind its last separator that has anything behind it; `path` itself if there is none.
/// Slashes and backslashes are separators.
const char* PathFindFileNameA(const char* path);
#endif
