#pragma once

/// The calls to the operating system that the library makes, under the names they have on Windows.

#if defined(_WIN32)
#    include <windows.h>
#else
/// Lets the thread rest for `milliseconds`.
void Sleep(unsigned milliseconds);
#endif
