#include "ptx/readers/step/damage/Excision.h"

#include "ptx/readers/step/damage/EntityKinds.h"
#include "ptx/readers/step/damage/MemberList.h"

#include <StepGeom_Pcurve.hxx>
#include <StepGeom_SurfaceCurve.hxx>
#include <StepRepr_DefinitionalRepresentation.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_PropertyDefinitionRepresentation.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <StepShape_ShapeRepresentation.hxx>

#include <algorithm>

namespace ptx::step::damage
{

namespace
{

/// A link whose loss takes the shape of a product or the place of an occurrence away.
bool tiesShapes(const Handle(Standard_Transient) & entity)
{
    return entity->IsKind(STANDARD_TYPE(StepShape_ShapeDefinitionRepresentation)) ||
           entity->IsKind(STANDARD_TYPE(StepShape_ContextDependentShapeRepresentation)) ||
           entity->IsKind(STANDARD_TYPE(StepRepr_ProductDefinitionShape));
}

/// Whether members of this list are shapes that somebody sees.
bool holdsShapes(const Handle(Standard_Transient) & list)
{
    return kinds::isGeometry(list) || list->IsKind(STANDARD_TYPE(StepShape_ShapeRepresentation));
}

/// A curve given in the plane of a surface's parameters.
bool isPlaneCurve(const Handle(Standard_Transient) & entity)
{
    return entity->IsKind(STANDARD_TYPE(StepGeom_Pcurve));
}

bool hasSpaceCurve(const Handle(Standard_Transient) & entity)
{
    const auto curve = Handle(StepGeom_SurfaceCurve)::DownCast(entity);
    return !curve.IsNull() && !curve->Curve3d().IsNull();
}

} // namespace

std::vector<Loss> Excision::run(const std::vector<Fault>& faults)
{
    for (Number number = 0; number < faults.size(); ++number) {
        m_losses.push_back({faults[number], {}});
        m_isTold.push_back(false);
        begin(faults[number], number);
    }
    spread();
    apply();
    std::vector<Loss> result;
    for (Number number = 0; number < m_losses.size(); ++number)
        if (m_isTold[number])
            result.push_back(std::move(m_losses[number]));
    return result;
}

void Excision::begin(const Fault& fault, Number number)
{
    const Handle(Standard_Transient) entity = m_model.at(fault.ident);
    if (entity.IsNull())
        return;
    const bool isRepresentation = entity->IsKind(STANDARD_TYPE(StepRepr_Representation)) &&
                                  !entity->IsKind(STANDARD_TYPE(StepRepr_DefinitionalRepresentation));
    if (memberlist::countHoles(entity) > 0 && (isRepresentation || memberlist::count(entity) > 0))
        tellHoles(fault.ident, entity, number);
    else if (!isRepresentation)
        breakEntity(fault.ident, number);
}

// The holes of a representation may be kinds of items that OCCT does not know.
void Excision::tellHoles(int ident, const Handle(Standard_Transient) & list, Number number)
{
    m_left.try_emplace(ident, memberlist::count(list));
    const bool isUnknownKind = m_losses[number].fault.reason.find("illegal type") != std::string::npos;
    if (kinds::isGeometry(list) || (holdsShapes(list) && !isUnknownKind))
        tell(number, ownersOf(ident, m_model));
}

void Excision::breakEntity(int ident, Number number)
{
    if (!m_broken.try_emplace(ident, number).second)
        return;
    m_open.push_back(ident);
    const Handle(Standard_Transient) entity = m_model.at(ident);
    if (entity->IsKind(STANDARD_TYPE(StepShape_ContextDependentShapeRepresentation)))
        cutOccurrence(entity);
    if (tiesShapes(entity))
        tell(number, {ownerOf(entity)});
    else if (const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(entity); !usage.IsNull())
        tell(number, {usage->RelatingProductDefinition()});
}

void Excision::spread()
{
    while (!m_open.empty()) {
        const int ident = m_open.back();
        m_open.pop_back();
        for (const int above : m_model.referringTo(ident))
            reach(above, m_model.at(ident), m_broken.at(ident));
    }
}

void Excision::reach(int ident, const Handle(Standard_Transient) & from, Number number)
{
    const Handle(Standard_Transient) entity = m_model.at(ident);
    if (entity.IsNull() || m_broken.contains(ident))
        return;
    if (isPlaneCurve(from) && hasSpaceCurve(entity))
        m_bereft.push_back(ident);
    else if (memberlist::isIn(entity))
        cutFrom(ident, entity, number);
    else if (kinds::needsAll(entity))
        breakEntity(ident, number);
}

void Excision::cutFrom(int ident, const Handle(Standard_Transient) & list, Number number)
{
    std::size_t& left = m_left.try_emplace(ident, memberlist::count(list)).first->second;
    left -= left > 0 ? 1 : 0;
    if (holdsShapes(list)) {
        const auto [entry, isNew] = m_ownersOf.try_emplace(ident);
        if (isNew)
            entry->second = ownersOf(ident, m_model);
        tell(number, entry->second);
    }
    if (left == 0 && !list->IsKind(STANDARD_TYPE(StepRepr_Representation)))
        breakEntity(ident, number);
}

// What belongs to no product is not lost to anybody, unless it is the link to the product that is broken.
void Excision::tell(Number number, const Owners& owners)
{
    Owners& known = m_losses[number].owners;
    for (const Handle(StepBasic_ProductDefinition) & owner : owners)
        if (!owner.IsNull() && std::find(known.begin(), known.end(), owner) == known.end())
            known.push_back(owner);
    const Handle(Standard_Transient) entity = m_model.at(m_losses[number].fault.ident);
    if (!known.empty() || kinds::isStructure(entity) || tiesShapes(entity) || !m_model.hasProducts())
        m_isTold[number] = true;
}

void Excision::cutOccurrence(const Handle(Standard_Transient) & place)
{
    const auto& relation = static_cast<const StepShape_ContextDependentShapeRepresentation&>(*place);
    if (relation.RepresentedProductRelation().IsNull())
        return;
    const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(
        relation.RepresentedProductRelation()->Definition().ProductDefinitionRelationship());
    if (!usage.IsNull())
        m_occurrences.push_back(usage);
}

// The curve in space is all that an edge needs.
void Excision::useSpaceCurve(int ident)
{
    const auto curve = Handle(StepGeom_SurfaceCurve)::DownCast(m_model.at(ident));
    for (const int above : m_model.referringTo(ident))
        if (const auto edge = Handle(StepShape_EdgeCurve)::DownCast(m_model.at(above)); !edge.IsNull())
            edge->SetEdgeGeometry(curve->Curve3d());
}

void Excision::apply()
{
    const auto isBroken = [this](const Handle(Standard_Transient) & entity) {
        return m_broken.contains(m_model.identOf(entity));
    };
    for (const auto& [ident, left] : m_left)
        if (!m_broken.contains(ident))
            memberlist::clean(m_model.at(ident), isBroken);
    for (const int ident : m_bereft)
        useSpaceCurve(ident);
    for (const auto& [ident, number] : m_broken)
        m_model.replace(ident, memberlist::makeStandIn());
    // An occurrence without its placement stays out by itself. In an assembly that is nowhere it is not missed twice.
    for (const Handle(StepRepr_NextAssemblyUsageOccurrence) & usage : m_occurrences)
        usage->SetRelatingProductDefinition(new StepBasic_ProductDefinition);
}

} // namespace ptx::step::damage
