#pragma once

#include "geometry/GeometryNote.h"

#include <vector>

namespace zn::nodes
{

/// Tells the user each of `notes`, with the name of its geometry.
void tell(const std::vector<geometry::GeometryNote>& notes);

} // namespace zn::nodes
