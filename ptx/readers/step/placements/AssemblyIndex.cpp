#include "ptx/readers/step/placements/AssemblyIndex.h"

#include <Interface_InterfaceModel.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepRepr_HArray1OfRepresentationItem.hxx>
#include <StepRepr_ItemDefinedTransformation.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_ShapeRepresentationRelationshipWithTransformation.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>

namespace ptx::step::placements
{

namespace
{

using Key = const Standard_Transient*;

void addOnly(std::unordered_map<Key, Key>& table, Key key, Key value)
{
    if (const auto [entry, isNew] = table.try_emplace(key, value); !isNew)
        entry->second = nullptr;
}

Key only(const std::unordered_map<Key, Key>& table, Key key)
{
    const auto found = table.find(key);
    return found == table.end() ? nullptr : found->second;
}

Handle(StepRepr_ProductDefinitionShape) shapeDefinedBy(const StepShape_ShapeDefinitionRepresentation& definition)
{
    return Handle(StepRepr_ProductDefinitionShape)::DownCast(definition.Definition().PropertyDefinition());
}

} // namespace

AssemblyIndex::AssemblyIndex(const Interface_InterfaceModel& model)
{
    for (int number = 1; number <= model.NbEntities(); ++number) {
        const Handle(Standard_Transient)& entity = model.Value(number);
        if (entity->IsKind(STANDARD_TYPE(StepRepr_NextAssemblyUsageOccurrence)))
            addUsage(Usage::DownCast(entity));
        else if (entity->IsKind(STANDARD_TYPE(StepRepr_ProductDefinitionShape)))
            addShape(Handle(StepRepr_ProductDefinitionShape)::DownCast(entity));
        else if (entity->IsKind(STANDARD_TYPE(StepRepr_Representation)))
            addItems(Handle(StepRepr_Representation)::DownCast(entity));
        else
            addRepresentation(entity);
    }
}

void AssemblyIndex::addUsage(const Usage& usage)
{
    if (!usage->RelatingProductDefinition().IsNull())
        m_usages[usage->RelatingProductDefinition().get()].push_back(usage);
}

void AssemblyIndex::addShape(const Handle(StepRepr_ProductDefinitionShape) & shape)
{
    if (const auto usage = Usage::DownCast(shape->Definition().ProductDefinitionRelationship()); !usage.IsNull())
        addOnly(m_shapeOfUsage, usage.get(), shape.get());
}

void AssemblyIndex::addRepresentation(const Handle(Standard_Transient) & definition)
{
    if (const auto place = Handle(StepShape_ContextDependentShapeRepresentation)::DownCast(definition);
        !place.IsNull() && !place->RepresentedProductRelation().IsNull())
        addOnly(m_placeOfShape, place->RepresentedProductRelation().get(), place.get());
    const auto own = Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(definition);
    if (own.IsNull() || own->UsedRepresentation().IsNull())
        return;
    if (const Handle(StepRepr_ProductDefinitionShape) shape = shapeDefinedBy(*own);
        !shape.IsNull() && !shape->Definition().ProductDefinition().IsNull())
        addOnly(m_productOfRepresentation, own->UsedRepresentation().get(),
                shape->Definition().ProductDefinition().get());
}

void AssemblyIndex::addItems(const Handle(StepRepr_Representation) & representation)
{
    if (representation->Items().IsNull())
        return;
    for (const Handle(StepRepr_RepresentationItem) & item : representation->Items()->Array1())
        if (!item.IsNull() && item->IsKind(STANDARD_TYPE(StepGeom_Axis2Placement3d)))
            m_axes[representation.get()].insert(item.get());
}

bool AssemblyIndex::isItem(const Handle(StepRepr_Representation) & representation, Key item) const
{
    const auto axes = m_axes.find(representation.get());
    return axes != m_axes.end() && axes->second.contains(item);
}

bool AssemblyIndex::isOf(const Handle(StepRepr_Representation) & representation, Key product) const
{
    return product && only(m_productOfRepresentation, representation.get()) == product;
}

const std::vector<AssemblyIndex::Usage>& AssemblyIndex::usagesIn(const StepBasic_ProductDefinition* assembly) const
{
    static const std::vector<Usage> none;
    const auto found = m_usages.find(assembly);
    return found == m_usages.end() ? none : found->second;
}

bool AssemblyIndex::placementOf(const Usage& usage, PlainPlacement& placement) const
{
    const auto* place = static_cast<const StepShape_ContextDependentShapeRepresentation*>(
        only(m_placeOfShape, only(m_shapeOfUsage, usage.get())));
    if (!place)
        return false;
    const auto relation =
        Handle(StepRepr_ShapeRepresentationRelationshipWithTransformation)::DownCast(place->RepresentationRelation());
    if (relation.IsNull() || relation->Rep1().IsNull() || relation->Rep2().IsNull())
        return false;
    const Handle(StepRepr_ItemDefinedTransformation) move =
        relation->TransformationOperator().ItemDefinedTransformation();
    if (move.IsNull())
        return false;
    placement = {relation->Rep1(), relation->Rep2(),
                 Handle(StepGeom_Axis2Placement3d)::DownCast(move->TransformItem1()),
                 Handle(StepGeom_Axis2Placement3d)::DownCast(move->TransformItem2())};
    return placement.part != placement.assembly && !placement.from.IsNull() && !placement.to.IsNull() &&
           isOf(placement.part, usage->RelatedProductDefinition().get()) &&
           isOf(placement.assembly, usage->RelatingProductDefinition().get()) &&
           isItem(placement.part, placement.from.get()) && isItem(placement.assembly, placement.to.get());
}

} // namespace ptx::step::placements
