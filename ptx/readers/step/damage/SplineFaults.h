#pragma once

#include <Standard_Handle.hxx>
#include <Standard_Transient.hxx>

#include <string>

namespace ptx::step::damage
{

/// What is wrong with the lists of a B-spline curve or surface: points, knots, multiplicities and weights that are
/// missing or do not fit each other. OCCT counts through them without looking. Empty if nothing is wrong, and for every
/// other entity.
std::string splineFault(const Handle(Standard_Transient) & entity);

/// Whether the entity is a B-spline, whose numbers cannot be guessed.
bool isSpline(const Handle(Standard_Transient) & entity);

} // namespace ptx::step::damage
