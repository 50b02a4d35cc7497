#include "ptx/readers/step/MaterialProperty.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/occt/OcctText.h"

#include <STEPConstruct_UnitContext.hxx>
#include <StepBasic_ConversionBasedUnitAndLengthUnit.hxx>
#include <StepBasic_ConversionBasedUnitAndMassUnit.hxx>
#include <StepBasic_DerivedUnit.hxx>
#include <StepBasic_DerivedUnitElement.hxx>
#include <StepBasic_MeasureValueMember.hxx>
#include <StepBasic_MeasureWithUnit.hxx>
#include <StepBasic_NamedUnit.hxx>
#include <StepBasic_SiUnitAndLengthUnit.hxx>
#include <StepBasic_SiUnitAndMassUnit.hxx>
#include <StepBasic_Unit.hxx>
#include <StepRepr_DescriptiveRepresentationItem.hxx>
#include <StepRepr_MeasureRepresentationItem.hxx>
#include <StepRepr_Representation.hxx>

#include <charconv>
#include <cmath>

namespace ptx::step
{

namespace
{

constexpr double GramsPerKilogram = 1000;
constexpr double PerGramPerCubicCentimetre = 1000; // kilograms per cubic metre
constexpr int Digits = 9;                          // what is left of them after units that are no powers of ten
constexpr int DeepestUnit = 8;                     // a unit may be told by another

bool isMass(const Handle(StepBasic_NamedUnit) & unit)
{
    return unit->IsKind(STANDARD_TYPE(StepBasic_SiUnitAndMassUnit)) ||
           unit->IsKind(STANDARD_TYPE(StepBasic_ConversionBasedUnitAndMassUnit));
}

bool isLength(const Handle(StepBasic_NamedUnit) & unit)
{
    return unit->IsKind(STANDARD_TYPE(StepBasic_SiUnitAndLengthUnit)) ||
           unit->IsKind(STANDARD_TYPE(StepBasic_ConversionBasedUnitAndLengthUnit));
}

std::optional<double> numberOf(const Handle(StepBasic_MeasureWithUnit) & measure)
{
    if (measure.IsNull() || measure->ValueComponentMember().IsNull())
        return std::nullopt;
    return measure->ValueComponentMember()->Real();
}

/// Kilograms or metres in a unit of mass or length; 0 if it tells nothing that can be understood.
double inSi(Handle(StepBasic_NamedUnit) unit)
{
    double factor = 1;
    for (int depth = 0; depth < DeepestUnit && !unit.IsNull(); ++depth) {
        if (const auto si = Handle(StepBasic_SiUnit)::DownCast(unit); !si.IsNull())
            return factor * (si->HasPrefix() ? STEPConstruct_UnitContext::ConvertSiPrefix(si->Prefix()) : 1) /
                   (isMass(unit) ? GramsPerKilogram : 1);
        const auto conversion = Handle(StepBasic_ConversionBasedUnit)::DownCast(unit);
        const std::optional<double> number =
            conversion.IsNull() ? std::nullopt : numberOf(conversion->ConversionFactor());
        if (!number)
            return 0;
        factor *= *number;
        unit = conversion->ConversionFactor()->UnitComponent().NamedUnit();
    }
    return 0;
}

/// Kilograms per cubic metre in a unit of density; 0 for any other.
double densityInSi(const Handle(StepBasic_DerivedUnit) & unit)
{
    if (unit.IsNull() || unit->Elements().IsNull())
        return 0;
    double factor = 1;
    double mass = 0;
    double length = 0;
    for (const Handle(StepBasic_DerivedUnitElement) & element : unit->Elements()->Array1()) {
        if (element.IsNull() || element->Unit().IsNull() || !(isMass(element->Unit()) || isLength(element->Unit())))
            return 0;
        (isMass(element->Unit()) ? mass : length) += element->Exponent();
        factor *= std::pow(inSi(element->Unit()), element->Exponent());
    }
    return mass == 1 && length == -3 && std::isfinite(factor) ? factor : 0;
}

std::optional<std::string> nameTag(const Handle(StepRepr_RepresentationItem) & item)
{
    const auto text = Handle(StepRepr_DescriptiveRepresentationItem)::DownCast(item);
    const std::string name = text.IsNull() ? std::string() : occt::utf8(text->Name());
    if (name.empty())
        return std::nullopt;
    return osg::scenefile::converted::tag(osg::scenefile::converted::MaterialKey, name);
}

std::optional<std::string> densityTag(const Handle(StepRepr_RepresentationItem) & item)
{
    const auto measure = Handle(StepRepr_MeasureRepresentationItem)::DownCast(item);
    const std::optional<double> number = measure.IsNull() ? std::nullopt : numberOf(measure->Measure());
    const double factor = number ? densityInSi(measure->Measure()->UnitComponent().DerivedUnit()) : 0;
    if (factor <= 0 || *number <= 0)
        return std::nullopt;
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, *number * factor / PerGramPerCubicCentimetre,
                                       std::chars_format::general, Digits);
    return osg::scenefile::converted::tag(osg::scenefile::converted::DensityKey, std::string(text, written.ptr));
}

} // namespace

std::optional<std::string> materialTag(const StepRepr_Representation& values)
{
    if (values.Items().IsNull() || values.NbItems() != 1)
        return std::nullopt;
    const std::string kind = occt::utf8(values.Name());
    if (kind == "material name")
        return nameTag(values.ItemsValue(1));
    return kind == "density" ? densityTag(values.ItemsValue(1)) : std::nullopt;
}

} // namespace ptx::step
