#pragma once

#include "files/glb/packing/PackOptions.h"
#include "files/glb/packing/PackedFile.h"

#include <string>

/// Makes the vertices, indices and buffer views of a file that is about to be written smaller.
namespace files::glb::packing
{

/// What packing came to.
struct Packed {
    Json buffers;                        ///< the document's list of them
    std::vector<std::string> extensions; ///< that whoever reads the file has to know
    double error = 0;                    ///< how far a vertex may have moved in the scene, in the unit of the file
};

/// Takes the steps that `options` ask for. `file` is as this writer makes it: attributes are floats that are close
/// together, each primitive has indices, and nothing but accessors uses the views. Nodes keep their numbers, names and
/// transforms; meshes on a grid hang below nodes of their own behind them. A unit of the file has `millimetres`.
Packed pack(PackedFile& file, const PackOptions& options, double millimetres);

} // namespace files::glb::packing
