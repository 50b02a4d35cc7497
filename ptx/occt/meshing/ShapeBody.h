#pragma once

#include "ptx/model/Appearance.h"
#include "ptx/model/View.h"

#include <NCollection_DataMap.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Shape.hxx>

#include <compare>
#include <string>

namespace ptx::occt::meshing
{

/// What a file says of a face, or of an edge of no face, beside its geometry.
struct Mark {
    int appearance = model::NoAppearance; ///< none: that of product and occurrence
    int views = model::AlwaysShown;       ///< number of the set of views that show it
    auto operator<=>(const Mark&) const = default;
};

/// The exact shape of one distinct part, before it is a mesh.
struct ShapeBody {
    TopoDS_Shape shape;
    std::string name;                                                       ///< for messages
    NCollection_DataMap<TopoDS_Shape, Mark, TopTools_ShapeMapHasher> marks; ///< of faces that have any
    double precision = 1e-4;     ///< the smallest length that counts, as the file tells it, in millimetres
    bool mayBeInsideOut = false; ///< its solids were healed, but for their orientation
};

} // namespace ptx::occt::meshing
