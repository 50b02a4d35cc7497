#pragma once

#include <Standard_Handle.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS_Shape.hxx>

namespace ptx::occt
{

/// Silences OCCT's own messages on standard output, keeps it from making names up, and keeps shape healing out of
/// its readers, where it would run one part after another. To be called once, before the first reader is made.
void setUpOcct();

/// A new document that holds lengths in millimetres.
Handle(TDocStd_Document) newDocument();

/// The precision that OCCT's reader meant to heal `shape` with, the given default when it never came by.
double precisionOf(const TopoDS_Shape& shape, double otherwise);

} // namespace ptx::occt
