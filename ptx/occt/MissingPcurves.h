#pragma once

class TopoDS_Shape;

namespace ptx::occt
{

/// Gives the edges of free-form faces of `shape` the curves on the face that they lack, by projecting their 3D curves
/// with the precision `precision` (mm), on several threads when `inParallel` says so. The result is the same with one.
///
/// OCCT's healing would do the same, one edge after another, and finds them made. What it does with care of its
/// own is left to it: seams, degenerated edges, faces with singular points, elementary surfaces (which cost nothing).
/// An edge that cannot be projected stays without.
void addMissingPcurves(const TopoDS_Shape& shape, double precision, bool inParallel);

} // namespace ptx::occt
