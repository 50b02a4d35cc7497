#include "ptx/readers/step/damage/FaultFinder.h"

#include "ptx/readers/step/damage/EmptyAssignments.h"
#include "ptx/readers/step/damage/EntityKinds.h"
#include "ptx/readers/step/damage/MemberList.h"
#include "ptx/readers/step/damage/SplineFaults.h"

#include <Interface_Check.hxx>
#include <Interface_ReportEntity.hxx>
#include <StepBasic_DerivedUnit.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_Circle.hxx>
#include <StepGeom_ConicalSurface.hxx>
#include <StepGeom_CylindricalSurface.hxx>
#include <StepGeom_Direction.hxx>
#include <StepGeom_SphericalSurface.hxx>
#include <StepGeom_SurfaceCurve.hxx>
#include <StepGeom_ToroidalSurface.hxx>
#include <StepGeom_TrimmedCurve.hxx>
#include <StepRepr_DefinitionalRepresentation.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepShape_EdgeLoop.hxx>
#include <StepShape_PolyLoop.hxx>
#include <StepShape_VertexPoint.hxx>
#include <StepVisual_Invisibility.hxx>
#include <StepVisual_SurfaceStyleRenderingWithProperties.hxx>

#include <cmath>
#include <initializer_list>
#include <string_view>

namespace ptx::step::damage
{

namespace
{

// OCCT ends in endless loops and beyond its memory on points farther away than this, in units of the file.
constexpr double Farthest = 1e15;

bool hasAny(std::string_view text, std::initializer_list<std::string_view> words)
{
    for (const std::string_view word : words)
        if (text.find(word) != std::string_view::npos)
            return true;
    return false;
}

/// Whether what OCCT says of an entity means that a field of it is empty.
bool tellsOfHole(std::string_view text, const Handle(Standard_Transient) & entity)
{
    if (hasAny(text, {"not an Entity", "illegal type", "unresolved", "Count of Parameters", "not a LIST"}))
        return true;
    if (isSpline(entity))
        return hasAny(text, {"not a Real", "not an Integer"});
    return hasAny(text, {"not a Real"}) && (entity->IsKind(STANDARD_TYPE(StepGeom_CartesianPoint)) ||
                                            entity->IsKind(STANDARD_TYPE(StepGeom_Direction)));
}

/// The first complaint that tells of a hole, an unresolved reference before all others; empty if none does.
std::string holeOf(const Interface_Check& check, const Handle(Standard_Transient) & entity)
{
    std::string result;
    for (int i = 1; i <= check.NbFails(); ++i) {
        const std::string text = check.CFail(i);
        if (hasAny(text, {"unresolved"}))
            return "it refers to an entity that the file does not hold";
        if (result.empty() && tellsOfHole(text, entity))
            result = text;
    }
    return result;
}

bool isUnbound(const Handle(Standard_Transient) & entity)
{
    const auto shape = Handle(StepRepr_ProductDefinitionShape)::DownCast(entity);
    return !shape.IsNull() && shape->Definition().Value().IsNull();
}

/// Of entities whose complaints count.
bool mayBeFaulty(const Handle(Standard_Transient) & entity)
{
    return kinds::isGeometry(entity) || kinds::isStructure(entity) || kinds::isDetail(entity) ||
           memberlist::isIn(entity) || isUnbound(entity);
}

bool isFarAway(const StepGeom_CartesianPoint& point)
{
    for (int i = 1; i <= point.NbCoordinates(); ++i)
        if (!(std::abs(point.CoordinatesValue(i)) < Farthest))
            return true;
    return false;
}

/// The radius of what has one, 0 of all else.
double radiusOf(const Handle(Standard_Transient) & entity)
{
    const Handle(Standard_Type)& type = entity->DynamicType();
    if (type == STANDARD_TYPE(StepGeom_Circle))
        return static_cast<const StepGeom_Circle&>(*entity).Radius();
    if (type == STANDARD_TYPE(StepGeom_CylindricalSurface))
        return static_cast<const StepGeom_CylindricalSurface&>(*entity).Radius();
    if (type == STANDARD_TYPE(StepGeom_ConicalSurface))
        return static_cast<const StepGeom_ConicalSurface&>(*entity).Radius();
    if (type == STANDARD_TYPE(StepGeom_SphericalSurface))
        return static_cast<const StepGeom_SphericalSurface&>(*entity).Radius();
    if (type == STANDARD_TYPE(StepGeom_ToroidalSurface))
        return static_cast<const StepGeom_ToroidalSurface&>(*entity).MajorRadius();
    return 0;
}

/// Representations may have no item, but for those of curves in the plane of a surface.
bool mayBeEmpty(const Handle(Standard_Transient) & list)
{
    return list->IsKind(STANDARD_TYPE(StepRepr_Representation)) &&
           !list->IsKind(STANDARD_TYPE(StepRepr_DefinitionalRepresentation));
}

template <class Type>
const Type& as(const Handle(Standard_Transient) & entity)
{
    return static_cast<const Type&>(*entity);
}

/// Whether a list is empty that OCCT takes for granted.
bool lacksList(const Handle(Standard_Transient) & entity)
{
    const Handle(Standard_Type)& type = entity->DynamicType();
    if (type == STANDARD_TYPE(StepShape_EdgeLoop))
        return as<StepShape_EdgeLoop>(entity).EdgeList().IsNull();
    if (type == STANDARD_TYPE(StepShape_PolyLoop))
        return as<StepShape_PolyLoop>(entity).Polygon().IsNull();
    if (type == STANDARD_TYPE(StepBasic_DerivedUnit))
        return as<StepBasic_DerivedUnit>(entity).Elements().IsNull();
    if (type == STANDARD_TYPE(StepGeom_TrimmedCurve))
        return as<StepGeom_TrimmedCurve>(entity).Trim1().IsNull() || as<StepGeom_TrimmedCurve>(entity).Trim2().IsNull();
    if (type == STANDARD_TYPE(StepVisual_SurfaceStyleRenderingWithProperties))
        return as<StepVisual_SurfaceStyleRenderingWithProperties>(entity).Properties().IsNull();
    if (type == STANDARD_TYPE(StepVisual_Invisibility))
        return as<StepVisual_Invisibility>(entity).InvisibleItems().IsNull();
    if (entity->IsKind(STANDARD_TYPE(StepGeom_SurfaceCurve)))
        return as<StepGeom_SurfaceCurve>(entity).AssociatedGeometry().IsNull();
    return (memberlist::isEmpty(entity) && !mayBeEmpty(entity)) || isEmptyAssignment(entity);
}

constexpr const char* EmptyList = "its list is empty";

/// Whether a place in space has less than three coordinates; an empty list comes as two.
bool lacksSpace(const Handle(Standard_Transient) & entity)
{
    Handle(Standard_Transient) point;
    if (const auto placement = Handle(StepGeom_Axis2Placement3d)::DownCast(entity); !placement.IsNull())
        point = placement->Location();
    else if (const auto vertex = Handle(StepShape_VertexPoint)::DownCast(entity); !vertex.IsNull())
        point = vertex->VertexGeometry();
    return !point.IsNull() && point->IsKind(STANDARD_TYPE(StepGeom_CartesianPoint)) &&
           as<StepGeom_CartesianPoint>(point).NbCoordinates() < 3;
}

/// What OCCT does not complain about and falls over; empty if there is nothing. Points and directions come first: they
/// are most of a model.
std::string silentFault(const Handle(Standard_Transient) & entity)
{
    const Handle(Standard_Type)& type = entity->DynamicType();
    if (type == STANDARD_TYPE(StepGeom_CartesianPoint))
        return isFarAway(as<StepGeom_CartesianPoint>(entity)) ? "its coordinates are out of all proportion"
                                                              : std::string();
    if (type == STANDARD_TYPE(StepGeom_Direction))
        return as<StepGeom_Direction>(entity).DirectionRatios().IsNull() ? EmptyList : std::string();
    if (lacksList(entity))
        return EmptyList;
    if (!(std::abs(radiusOf(entity)) < Farthest))
        return "its radius is out of all proportion";
    return lacksSpace(entity) ? "its point has no three coordinates" : splineFault(entity);
}

} // namespace

std::vector<Fault> findFaults(const StepData_StepModel& model)
{
    std::vector<Fault> faults;
    for (int number = 1; number <= model.NbEntities(); ++number) {
        const Handle(Standard_Transient)& entity = model.Value(number);
        std::string reason;
        if (model.IsReportEntity(number) && mayBeFaulty(entity))
            reason = holeOf(*model.ReportEntity(number)->Check(), entity);
        if (reason.empty())
            reason = silentFault(entity);
        if (!reason.empty())
            faults.push_back({model.IdentLabel(entity), std::move(reason)});
    }
    return faults;
}

} // namespace ptx::step::damage
