#pragma once

#include "importer/plmxml/Structure.h"

namespace importer::plmxml
{

/// Gives each place whose override has another part or a shape of its own a part of its own, and each assembly on the
/// way there, too: what is shared shows the same everywhere. The paths of all overrides lead through the new placements
/// then.
///
/// False when that would make more placements than a structure may have; the rest keep the shapes of their parts.
bool separateOwnShapes(Structure& structure);

} // namespace importer::plmxml
