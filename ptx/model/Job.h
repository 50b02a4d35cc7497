#pragma once

#include "ptx/core/Limits.h"
#include "ptx/core/Log.h"
#include "ptx/core/Progress.h"
#include "ptx/core/Settings.h"

#include <cstdint>
#include <string>

namespace ptx
{

/// What a reader has to know; all of it outlives the reading.
struct Job {
    std::string input; ///< absolute path
    std::uint64_t inputBytes = 0;
    bool externalParts = false;
    const Settings& settings;
    Limits& limits;
    Progress& progress;
    Log& log;
};

} // namespace ptx
