#pragma once

#include "host/znUtils/znMessage.h"

/// What the user of the host prefers.
class ZN_HOST_EXPORT znPreferences
{
public:
    /// The preferences as they are now; valid as long as the session lives. "FileIO tmp path" (`QString`) is there when
    /// the user has chosen a folder for converted files.
    static const znMessage& getData();
};
