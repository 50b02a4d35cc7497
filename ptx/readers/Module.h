#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

#include <cstddef>

namespace ptx::readers
{

/// A reader in a library of its own, which the program loads when a file needs it: the CAD kernel is 78 libraries, and
/// to load them costs a small file of another format more than everything else.
///
/// Such a library finds the converter's own functions in the program, so that both have to come from one build.
struct Module {
    const char* version;      ///< that of the program which it belongs to
    std::size_t bytesOfJob;   ///< how the library sees the types that it shares with the program
    std::size_t bytesOfModel; ///< as above
    const char* kernel;       ///< the version of the CAD kernel in use
    core::Outcome<model::Model> (*read)(const model::Job& job); ///< as Format::read
};

/// A module of this build.
constexpr Module moduleOf(const char* kernel, core::Outcome<model::Model> (*read)(const model::Job& job))
{
    return {ZN_VERSION, sizeof(model::Job), sizeof(model::Model), kernel, read};
}

} // namespace ptx::readers
