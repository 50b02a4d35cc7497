#pragma once

#include "ptx/occt/meshing/ShapeBody.h"

namespace ptx::occt::meshing
{

enum class SewingResult { Sewn, OutOfTime };

/// Joins the faces of `body` whose edges lie within `tolerance` of each other. The marks follow the faces. When
/// `seconds` (0: no limit) are over the body stays as it was. Exceptions of OCCT pass through.
SewingResult sew(ShapeBody& body, double tolerance, double seconds);

} // namespace ptx::occt::meshing
