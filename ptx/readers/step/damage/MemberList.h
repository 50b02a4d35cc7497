#pragma once

#include <Standard_Handle.hxx>
#include <Standard_Transient.hxx>
#include <StepRepr_RepresentationItem.hxx>

#include <cstddef>
#include <functional>

/// Lists of entities that can do without some of their members: the faces of a shell, the shells of a model, the
/// elements of a set, the items of a representation, the styles of an assignment.
namespace ptx::step::damage::memberlist
{

/// Whether `entity` has such a list, also an empty one.
bool isIn(const Handle(Standard_Transient) & entity);

/// Whether `entity` has such a list, and the list is empty.
bool isEmpty(const Handle(Standard_Transient) & entity);

/// How many members are there; those that OCCT could not read are null and do not count.
std::size_t count(const Handle(Standard_Transient) & entity);

/// How many are null.
std::size_t countHoles(const Handle(Standard_Transient) & entity);

/// An entity that says nothing, to stand where there has to be one.
Handle(StepRepr_RepresentationItem) makeStandIn();

/// Takes out what is null or `isBroken`. OCCT does not expect a list without members: of a representation a stand-in is
/// left then, and any other list stays as it is.
void clean(const Handle(Standard_Transient) & entity,
           const std::function<bool(const Handle(Standard_Transient) &)>& isBroken);

} // namespace ptx::step::damage::memberlist
