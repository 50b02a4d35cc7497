#include "ptx/readers/step/damage/Owners.h"

#include "ptx/readers/step/damage/EntityKinds.h"

#include <StepBasic_ProductDefinitionRelationship.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepRepr_RepresentationRelationship.hxx>
#include <StepRepr_RepresentationRelationshipWithTransformation.hxx>
#include <StepRepr_ShapeRepresentationRelationshipWithTransformation.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>

#include <algorithm>
#include <unordered_set>

namespace ptx::step::damage
{

namespace
{

Handle(StepBasic_ProductDefinition) ownerOf(const Handle(StepRepr_PropertyDefinition) & property)
{
    if (property.IsNull())
        return {};
    const Handle(StepBasic_ProductDefinitionRelationship) usage =
        property->Definition().ProductDefinitionRelationship();
    return usage.IsNull() ? property->Definition().ProductDefinition() : usage->RelatingProductDefinition();
}

/// Goes from an entity to what holds it until products are reached.
class Climb
{
public:
    explicit Climb(const ModelView& model) : m_model(model) {}

    Owners from(int ident)
    {
        visit(ident);
        while (!m_open.empty()) {
            const int next = m_open.back();
            m_open.pop_back();
            for (const int above : m_model.referringTo(next))
                climb(above, next);
        }
        return std::move(m_owners);
    }

private:
    void visit(int ident)
    {
        if (ident != 0 && m_seen.insert(ident).second)
            m_open.push_back(ident);
    }

    void climb(int ident, int from)
    {
        const Handle(Standard_Transient) entity = m_model.at(ident);
        if (entity.IsNull())
            return;
        if (kinds::isGeometry(entity) || entity->IsKind(STANDARD_TYPE(StepRepr_Representation)) ||
            entity->IsKind(STANDARD_TYPE(StepRepr_RepresentationMap)))
            visit(ident);
        else if (const auto relation = Handle(StepRepr_RepresentationRelationship)::DownCast(entity);
                 !relation.IsNull())
            cross(*relation, from);
        else if (entity->IsKind(STANDARD_TYPE(StepShape_ShapeDefinitionRepresentation)))
            add(damage::ownerOf(entity));
    }

    // A relation with a transformation leads to another product.
    void cross(const StepRepr_RepresentationRelationship& relation, int from)
    {
        if (relation.IsKind(STANDARD_TYPE(StepRepr_RepresentationRelationshipWithTransformation)) ||
            relation.IsKind(STANDARD_TYPE(StepRepr_ShapeRepresentationRelationshipWithTransformation)))
            return;
        for (const Handle(StepRepr_Representation) & side : {relation.Rep1(), relation.Rep2()})
            if (!side.IsNull() && m_model.identOf(side) != from)
                visit(m_model.identOf(side));
    }

    void add(const Handle(StepBasic_ProductDefinition) & product)
    {
        if (!product.IsNull() && std::find(m_owners.begin(), m_owners.end(), product) == m_owners.end())
            m_owners.push_back(product);
    }

    const ModelView& m_model;
    std::unordered_set<int> m_seen;
    std::vector<int> m_open;
    Owners m_owners;
};

} // namespace

Owners ownersOf(int ident, const ModelView& model)
{
    return Climb(model).from(ident);
}

Handle(StepBasic_ProductDefinition) ownerOf(const Handle(Standard_Transient) & link)
{
    if (const auto shape = Handle(StepRepr_PropertyDefinitionRepresentation)::DownCast(link); !shape.IsNull())
        return ownerOf(shape->Definition().PropertyDefinition());
    if (const auto place = Handle(StepShape_ContextDependentShapeRepresentation)::DownCast(link); !place.IsNull())
        return ownerOf(Handle(StepRepr_PropertyDefinition)(place->RepresentedProductRelation()));
    if (const auto usage = Handle(StepBasic_ProductDefinitionRelationship)::DownCast(link); !usage.IsNull())
        return usage->RelatingProductDefinition();
    return {};
}

} // namespace ptx::step::damage
