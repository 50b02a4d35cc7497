#pragma once

#include <Standard_Handle.hxx>
#include <Standard_Transient.hxx>

namespace ptx::step::damage
{

/// Whether `entity` assigns an approval, a person, a date or the like to nothing. OCCT counts the items of such an
/// assignment without looking whether there are any.
bool isEmptyAssignment(const Handle(Standard_Transient) & entity);

} // namespace ptx::step::damage
