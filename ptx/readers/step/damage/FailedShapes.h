#pragma once

#include "ptx/readers/step/damage/Fault.h"

#include <vector>

class STEPCAFControl_Reader;

namespace ptx::step::damage
{

/// After a transfer: the entities that kept OCCT from translating solids, surface models and sets. When faces are the
/// cause, these are named, and without them the rest can be translated in another reading; otherwise the whole is.
std::vector<Fault> findFailedShapes(STEPCAFControl_Reader& reader);

} // namespace ptx::step::damage
