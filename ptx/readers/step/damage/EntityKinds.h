#pragma once

#include <Standard_Handle.hxx>
#include <Standard_Transient.hxx>

/// What an entity of a STEP model is good for, where that decides what goes with it when it is broken.
namespace ptx::step::damage::kinds
{

/// Points, curves, surfaces, faces, solids and copies of these.
bool isGeometry(const Handle(Standard_Transient) & entity);

/// What ties shapes to products, or products to each other.
bool isStructure(const Handle(Standard_Transient) & entity);

/// Parts of a colour or of a unit. OCCT follows them without looking whether they are there.
bool isDetail(const Handle(Standard_Transient) & entity);

/// Whether the entity is useless when one that it refers to is broken.
bool needsAll(const Handle(Standard_Transient) & entity);

} // namespace ptx::step::damage::kinds
