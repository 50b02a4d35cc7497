#pragma once

#include "files/references/ReferencePolicy.h"
#include "ptx/core/Limits.h"
#include "ptx/core/Log.h"
#include "ptx/core/Progress.h"
#include "ptx/core/Rescue.h"
#include "ptx/core/Settings.h"

#include <cstdint>
#include <string>

namespace ptx::model
{

/// What a reader has to know; all of it outlives the reading.
struct Job {
    std::string input; ///< absolute path
    std::uint64_t inputBytes = 0;
    bool externalParts = false;
    const core::Settings& settings;
    core::Limits& limits;
    core::Progress& progress;
    core::Log& log;
    core::Rescue& rescue;
    files::references::Policy references = {}; ///< which files may be named; `top` is set
};

} // namespace ptx::model
