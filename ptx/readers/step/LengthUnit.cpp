#include "ptx/readers/step/LengthUnit.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_ConversionBasedUnitAndLengthUnit.hxx>
#include <StepBasic_SiUnitAndLengthUnit.hxx>
#include <StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx.hxx>
#include <StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_WorkSession.hxx>

namespace ptx::step
{

namespace
{

Handle(StepRepr_GlobalUnitAssignedContext) unitsOf(const Handle(Standard_Transient) & entity)
{
    using WithAccuracy = StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx;
    using Without = StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext;
    if (const auto context = Handle(WithAccuracy)::DownCast(entity); !context.IsNull())
        return context->GlobalUnitAssignedContext();
    if (const auto context = Handle(Without)::DownCast(entity); !context.IsNull())
        return context->GlobalUnitAssignedContext();
    return {};
}

std::string prefixText(const StepBasic_SiUnit& unit)
{
    if (!unit.HasPrefix())
        return "";
    switch (unit.Prefix()) {
    case StepBasic_spMilli:
        return "m";
    case StepBasic_spCenti:
        return "c";
    case StepBasic_spDeci:
        return "d";
    case StepBasic_spMicro:
        return "u";
    case StepBasic_spNano:
        return "n";
    case StepBasic_spKilo:
        return "k";
    default:
        return "?";
    }
}

std::string lengthText(const Handle(StepBasic_NamedUnit) & unit)
{
    if (const auto si = Handle(StepBasic_SiUnitAndLengthUnit)::DownCast(unit); !si.IsNull())
        return prefixText(*si) + "m";
    if (const auto other = Handle(StepBasic_ConversionBasedUnitAndLengthUnit)::DownCast(unit); !other.IsNull())
        return other->Name().IsNull() ? std::string() : other->Name()->ToCString();
    return "";
}

} // namespace

double millimetresIn(const Handle(Standard_Transient) & context)
{
    const Handle(StepRepr_GlobalUnitAssignedContext) units = unitsOf(context);
    STEPConstruct_UnitContext factors;
    if (units.IsNull() || factors.ComputeFactors(units) != 0 || !factors.LengthDone())
        return 0;
    return factors.LengthFactor();
}

std::string lengthUnit(const STEPCAFControl_Reader& reader)
{
    const Handle(Interface_InterfaceModel) model = reader.Reader().WS()->Model();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const Handle(StepRepr_GlobalUnitAssignedContext) units = unitsOf(model->Value(i));
        if (units.IsNull() || units->Units().IsNull())
            continue;
        for (const Handle(StepBasic_NamedUnit) & unit : units->Units()->Array1())
            if (std::string text = lengthText(unit); !text.empty())
                return text;
    }
    return "";
}

} // namespace ptx::step
