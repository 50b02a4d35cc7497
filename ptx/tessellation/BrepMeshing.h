#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/tessellation/Options.h"
#include "scene/Mesh.h"

namespace ptx::tessellation
{

/// Keeps OCCT from writing to standard output.
void silenceOcct();

/// Meshes the surfaces in `brep` as `options` ask for it. Each surface is one face of the mesh, in its order there.
/// What cannot be read or meshed as a whole is a failure, never half a mesh.
core::Outcome<std::shared_ptr<const osg::Mesh>> meshBrep(const osg::Buffer<std::byte>& brep,
                                                         const TessellationOptions& options, bool inParallel);

} // namespace ptx::tessellation
