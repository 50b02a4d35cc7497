#include "ptx/readers/step/damage/EntityKinds.h"

#include <StepBasic_DerivedUnit.hxx>
#include <StepBasic_DerivedUnitElement.hxx>
#include <StepBasic_MeasureWithUnit.hxx>
#include <StepRepr_ItemDefinedTransformation.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_MeasureRepresentationItem.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_PropertyDefinitionRepresentation.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepRepr_RepresentationRelationship.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_TopologicalRepresentationItem.hxx>
#include <StepVisual_Colour.hxx>
#include <StepVisual_FillAreaStyle.hxx>
#include <StepVisual_FillAreaStyleColour.hxx>
#include <StepVisual_StyledItem.hxx>
#include <StepVisual_SurfaceSideStyle.hxx>
#include <StepVisual_SurfaceStyleFillArea.hxx>
#include <StepVisual_SurfaceStyleUsage.hxx>

#include <string_view>

namespace ptx::step::damage::kinds
{

namespace
{

template <class... Types>
bool isAnyOf(const Handle(Standard_Transient) & entity)
{
    return (entity->IsKind(STANDARD_TYPE(Types)) || ...);
}

} // namespace

// Annotations are geometric items as well; the packages tell them apart.
bool isGeometry(const Handle(Standard_Transient) & entity)
{
    if (!entity->IsKind(STANDARD_TYPE(StepRepr_RepresentationItem)))
        return false;
    const std::string_view name = entity->DynamicType()->Name();
    return name.starts_with("StepGeom_") || name.starts_with("StepShape_") ||
           entity->IsKind(STANDARD_TYPE(StepRepr_MappedItem));
}

bool isStructure(const Handle(Standard_Transient) & entity)
{
    return isAnyOf<StepRepr_RepresentationMap, StepRepr_ItemDefinedTransformation, StepRepr_RepresentationRelationship,
                   StepShape_ContextDependentShapeRepresentation, StepRepr_PropertyDefinitionRepresentation>(entity);
}

bool isDetail(const Handle(Standard_Transient) & entity)
{
    return isAnyOf<StepBasic_DerivedUnit, StepBasic_DerivedUnitElement, StepVisual_Colour, StepVisual_FillAreaStyle,
                   StepVisual_FillAreaStyleColour, StepVisual_SurfaceSideStyle, StepVisual_SurfaceStyleFillArea,
                   StepVisual_SurfaceStyleUsage>(entity);
}

bool needsAll(const Handle(Standard_Transient) & entity)
{
    return isGeometry(entity) || isStructure(entity) || isDetail(entity) ||
           isAnyOf<StepVisual_StyledItem, StepBasic_MeasureWithUnit, StepRepr_MeasureRepresentationItem>(entity);
}

} // namespace ptx::step::damage::kinds
