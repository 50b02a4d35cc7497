#pragma once

#include "ptx/core/Progress.h"
#include "ptx/readers/step/damage/Fault.h"

#include <vector>

class STEPCAFControl_Reader;

namespace ptx::step::damage
{

/// How closely to look for what OCCT crashes on.
enum class Blame {
    Faces, ///< the faces of an item that crash for themselves; the item, where there are none
    Items  ///< the items, whatever in them crashes
};

/// After the text was read: the entities that OCCT crashes on, found by copies of this process that translate them one
/// by one. The reader is not to be used for a transfer afterwards.
std::vector<Fault> findCrashingEntities(STEPCAFControl_Reader& reader, Blame blame, core::Progress& progress);

} // namespace ptx::step::damage
