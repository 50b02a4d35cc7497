#pragma once

#include "files/glb/gathering/GatherOptions.h"
#include "files/glb/packing/PackedFile.h"

/// Makes a file that is about to be written quicker to draw.
namespace files::glb::gathering
{

/// Draws parts together as `options` say. `file` is as `packing::pack` takes it. What hangs below a node that variant
/// sets show or hide stays below it. What is seen through stays as it is, because viewers sort such nodes by their
/// distance. No box of a merged mesh has a side longer than `largest` in the scene, in the unit
/// of the file.
///
/// The nodes of parts that are drawn together go, and those above that have nothing left and no extras. A node with
/// instances lists them in `extras.instances`, in their order; one with merged parts lists these in `extras.parts`,
/// of which primitives tell the numbers (see MergedMesh). An entry has the members of the extras of the part's node,
/// its "name", the name of its "mesh" where that is another, and as "path" the names of the nodes between it and the
/// one that draws it. Where siblings of these have the same name, the lowest one has a number, "group", in its
/// extras, which the entry has too. The accessors of the arrays that are not used any more stay; `packing::pack`
/// leaves them out.
void gather(packing::PackedFile& file, const GatherOptions& options, double largest);

} // namespace files::glb::gathering
