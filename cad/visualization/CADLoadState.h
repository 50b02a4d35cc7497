#pragma once

#include <cstdint>

namespace HB::Visualization
{

/// Where a record stands on its way into the scene. Bit 2 says that it carries a file, bit 1 that it is realised, bit 0
/// that a change is requested.
enum class CADLoadState : std::uint32_t {
    Idle = 0,                      ///< no file, not realised
    IdleLoadRequested = 1,         ///< the same, load asked for
    Realized = 2,                  ///< no file, realised
    RealizedUnloadRequested = 3,   ///< the same, unload asked for
    FilePending = 4,               ///< carries a file that is not in the scene
    FilePendingLoadRequested = 5,  ///< the same, load asked for
    FileLoaded = 6,                ///< the file's content is child 0 of the record's node
    FileLoadedUnloadRequested = 7, ///< the same, unload asked for
};

} // namespace HB::Visualization
