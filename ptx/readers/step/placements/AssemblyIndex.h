#pragma once

#include <Standard_Handle.hxx>

#include <unordered_map>
#include <unordered_set>
#include <vector>

class Interface_InterfaceModel;
class Standard_Transient;
class StepBasic_ProductDefinition;
class StepGeom_Axis2Placement3d;
class StepRepr_NextAssemblyUsageOccurrence;
class StepRepr_ProductDefinitionShape;
class StepRepr_Representation;
class StepShape_ContextDependentShapeRepresentation;

namespace ptx::step::placements
{

/// The place of an occurrence, as a system that writes no oddities gives it.
struct PlainPlacement {
    Handle(StepRepr_Representation) part;     ///< of the product that is placed
    Handle(StepRepr_Representation) assembly; ///< of the product that it stands in
    Handle(StepGeom_Axis2Placement3d) from;   ///< an item of `part`
    Handle(StepGeom_Axis2Placement3d) to;     ///< an item of `assembly`
};

/// Which products a model places in which, taken from it in one pass: OCCT looks through all occurrences of a product
/// to find the place of one, which makes ten thousand of them a matter of minutes.
class AssemblyIndex
{
public:
    explicit AssemblyIndex(const Interface_InterfaceModel& model);

    using Usage = Handle(StepRepr_NextAssemblyUsageOccurrence);

    /// The occurrences that stand in `assembly`, in the order of the file.
    const std::vector<Usage>& usagesIn(const StepBasic_ProductDefinition* assembly) const;

    /// Where `usage` places its product. @return false when that is given in a way that leaves anything to decide: not
    /// at all, several times, against the direction of the usage, by placements of other representations
    bool placementOf(const Usage& usage, PlainPlacement& placement) const;

private:
    using Key = const Standard_Transient*;
    /// The one thing that refers to another; none when there are several.
    using OneToOne = std::unordered_map<Key, Key>;

    void addUsage(const Usage& usage);
    void addShape(const Handle(StepRepr_ProductDefinitionShape) & shape);
    void addRepresentation(const Handle(Standard_Transient) & definition);
    void addItems(const Handle(StepRepr_Representation) & representation);
    bool isItem(const Handle(StepRepr_Representation) & representation, Key item) const;
    bool isOf(const Handle(StepRepr_Representation) & representation, Key product) const;

    std::unordered_map<Key, std::vector<Usage>> m_usages; ///< by assembly
    OneToOne m_shapeOfUsage;                              ///< the product definition shape of an occurrence
    OneToOne m_placeOfShape;                              ///< what places such a shape
    OneToOne m_productOfRepresentation;
    std::unordered_map<Key, std::unordered_set<Key>> m_axes; ///< the placements among the items of a representation
};

} // namespace ptx::step::placements
