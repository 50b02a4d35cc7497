#include "ptx/readers/step/StandIns.h"

#include <StepBasic_ProductDefinition.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_Placement.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepRepr_HArray1OfRepresentationItem.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <StepRepr_PropertyDefinition.hxx>
#include <StepRepr_RepresentationRelationshipWithTransformation.hxx>
#include <StepRepr_ShapeRepresentationRelationship.hxx>
#include <StepShape_GeometricSet.hxx>
#include <StepShape_HArray1OfGeometricSetSelect.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <StepShape_ShapeRepresentation.hxx>
#include <TCollection_HAsciiString.hxx>

#include <unordered_set>
#include <vector>

namespace ptx::step
{

namespace
{

using Representation = Handle(StepRepr_Representation);
using Definition = Handle(StepShape_ShapeDefinitionRepresentation);

class StandInMaker
{
public:
    StandInMaker(const Handle(StepData_StepModel) & model, const std::set<std::uint32_t>& products) : m_model(model)
    {
        for (int i = 1; i <= model->NbEntities(); ++i)
            look(model->Value(i), products);
    }

    /// @return the products that need none
    std::set<std::uint32_t> run()
    {
        std::set<std::uint32_t> exact;
        for (const Definition& definition : m_definitions) {
            const Representation shape = definition->UsedRepresentation();
            const Handle(StepBasic_ProductDefinition) product = productOf(*definition);
            if (hasShape(shape) || m_shaped.contains(shape.get()))
                exact.insert(static_cast<std::uint32_t>(m_model->IdentLabel(product)));
            else if (!m_assemblies.contains(product.get()))
                complete(definition, shape);
        }
        return exact;
    }

private:
    void look(const Handle(Standard_Transient) & entity, const std::set<std::uint32_t>& products)
    {
        if (const auto shape = Definition::DownCast(entity); !shape.IsNull()) {
            const Handle(StepBasic_ProductDefinition) product = productOf(*shape);
            if (!product.IsNull() && products.contains(static_cast<std::uint32_t>(m_model->IdentLabel(product))))
                m_definitions.push_back(shape);
        } else if (const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(entity); !usage.IsNull()) {
            m_assemblies.insert(usage->RelatingProductDefinition().get());
        } else if (const auto relation = Handle(StepRepr_ShapeRepresentationRelationship)::DownCast(entity);
                   !relation.IsNull() &&
                   !relation->IsKind(STANDARD_TYPE(StepRepr_RepresentationRelationshipWithTransformation))) {
            addRelation(relation->Rep1(), relation->Rep2());
            addRelation(relation->Rep2(), relation->Rep1());
        } else if (const auto units = Handle(StepRepr_GlobalUnitAssignedContext)::DownCast(entity);
                   !units.IsNull() && m_context.IsNull()) {
            m_context = units;
        }
    }

    void addRelation(const Representation& shape, const Representation& exact)
    {
        if (!shape.IsNull() && hasShape(exact))
            m_shaped.insert(shape.get());
    }

    static Handle(StepBasic_ProductDefinition) productOf(const StepShape_ShapeDefinitionRepresentation& shape)
    {
        const Handle(StepRepr_PropertyDefinition) property = shape.Definition().PropertyDefinition();
        return property.IsNull() ? Handle(StepBasic_ProductDefinition)() : property->Definition().ProductDefinition();
    }

    /// Whether OCCT has anything to make of the items, which may be of kinds that it does not know.
    static bool hasShape(const Representation& representation)
    {
        for (int i = 1; !representation.IsNull() && i <= representation->NbItems(); ++i)
            if (const Handle(StepRepr_RepresentationItem) item = representation->ItemsValue(i);
                !item.IsNull() && !item->IsKind(STANDARD_TYPE(StepGeom_Placement)))
                return true;
        return false;
    }

    // Where the representation is one that OCCT does not know it has complained.
    void complete(const Definition& definition, const Representation& shape)
    {
        definition->SetUsedRepresentation(withPoint(shape));
        if (shape.IsNull())
            m_model->ClearReportEntity(m_model->Number(definition));
    }

    Representation withPoint(const Representation& shape)
    {
        Handle(TCollection_HAsciiString) name = new TCollection_HAsciiString("");
        Handle(StepRepr_HArray1OfRepresentationItem) items =
            new StepRepr_HArray1OfRepresentationItem(1, (shape.IsNull() ? 0 : shape->NbItems()) + 1);
        for (int i = 1; i < items->Length(); ++i)
            items->SetValue(i, shape->ItemsValue(i));
        items->SetValue(items->Length(), point(name));
        if (!shape.IsNull()) {
            shape->SetItems(items);
            return shape;
        }
        Handle(StepShape_ShapeRepresentation) made = new StepShape_ShapeRepresentation;
        made->Init(name, items, m_context);
        add(made);
        return made;
    }

    Handle(StepRepr_RepresentationItem) point(const Handle(TCollection_HAsciiString) & name)
    {
        Handle(StepGeom_CartesianPoint) origin = new StepGeom_CartesianPoint;
        origin->Init3D(name, 0, 0, 0);
        StepShape_GeometricSetSelect element;
        element.SetValue(origin);
        Handle(StepShape_HArray1OfGeometricSetSelect) elements = new StepShape_HArray1OfGeometricSetSelect(1, 1);
        elements->SetValue(1, element);
        Handle(StepShape_GeometricSet) set = new StepShape_GeometricSet;
        set->Init(name, elements);
        add(origin);
        add(set);
        return set;
    }

    // The model throws when it is asked for the number of an entity that never got one.
    void add(const Handle(Standard_Transient) & entity)
    {
        m_model->AddEntity(entity);
        m_model->SetIdentLabel(entity, 0);
    }

    Handle(StepData_StepModel) m_model;
    std::vector<Definition> m_definitions;
    std::unordered_set<const Standard_Transient*> m_assemblies; ///< products
    std::unordered_set<const Standard_Transient*> m_shaped;     ///< representations that exact ones are related to
    Handle(StepRepr_RepresentationContext) m_context;
};

} // namespace

std::set<std::uint32_t> addStandIns(const Handle(StepData_StepModel) & model, const std::set<std::uint32_t>& products)
{
    return products.empty() ? std::set<std::uint32_t>() : StandInMaker(model, products).run();
}

} // namespace ptx::step
