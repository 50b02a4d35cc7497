#pragma once

#include <Standard_Handle.hxx>
#include <StepShape_ConnectedFaceSet.hxx>

#include <vector>

namespace ptx::step::damage
{

/// Whether `entity` is a solid, a surface model or a set: what a representation holds.
bool isItem(const Handle(Standard_Transient) & entity);

/// The shells of `item` that have faces.
std::vector<Handle(StepShape_ConnectedFaceSet)> shellsOf(const Handle(Standard_Transient) & item);

} // namespace ptx::step::damage
