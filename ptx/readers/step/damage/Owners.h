#pragma once

#include "ptx/readers/step/damage/ModelView.h"

#include <StepBasic_ProductDefinition.hxx>

#include <vector>

namespace ptx::step::damage
{

/// Products, each once.
using Owners = std::vector<Handle(StepBasic_ProductDefinition)>;

/// The products whose shape entity #`ident` of `model` is part of: a face, a shell, a solid, a representation.
Owners ownersOf(int ident, const ModelView& model);

/// The product that the representation of `link` belongs to, null if none; for the shape of an occurrence the product
/// that holds the occurrence.
Handle(StepBasic_ProductDefinition) ownerOf(const Handle(Standard_Transient) & link);

} // namespace ptx::step::damage
