#pragma once

#include "host/HostExport.h"

/// Finds the pictures that files name.
class ZN_HOST_EXPORT znTexSearch
{
public:
    /// Searches begin in the folder of `file`, a UTF-8 path, until `clearCurrentFile`. Null counts as empty.
    static void setCurrentFile(const char* file);
    /// Searches have no folder to begin in any more.
    static void clearCurrentFile();
};
