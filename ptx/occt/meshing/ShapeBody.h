#pragma once

#include "ptx/model/Appearance.h"

#include <NCollection_DataMap.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Shape.hxx>

#include <string>

namespace ptx::occt::meshing
{

/// The exact shape of one distinct part, before it is a mesh.
struct ShapeBody {
    TopoDS_Shape shape;
    std::string name; ///< for messages
    /// Appearances of single faces; the others are left to product and occurrence.
    NCollection_DataMap<TopoDS_Shape, int, TopTools_ShapeMapHasher> appearances;
    double precision = 1e-4;     ///< the smallest length that counts, as the file tells it, in millimetres
    bool mayBeInsideOut = false; ///< its solids were healed, but for their orientation
};

} // namespace ptx::occt::meshing
