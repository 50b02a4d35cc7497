#include "ptx/readers/step/UnitText.h"

#include "ptx/core/Settings.h"
#include "ptx/occt/OcctText.h"

#include <StepBasic_ConversionBasedUnit.hxx>
#include <StepBasic_DerivedUnit.hxx>
#include <StepBasic_DerivedUnitElement.hxx>
#include <StepBasic_HArray1OfDerivedUnitElement.hxx>
#include <StepBasic_NamedUnit.hxx>
#include <StepBasic_SiUnit.hxx>

#include <cmath>

namespace ptx::step
{

namespace
{

// In the order of the kernel's enumerations.
constexpr const char* SiNames[] = {"m", "g", "s", "A",   "K", "mol", "cd", "rad", "sr",   "Hz", "N",  "Pa", "J",  "W",
                                   "C", "V", "F", "Ohm", "S", "Wb",  "T",  "H",   "degC", "lm", "lx", "Bq", "Gy", "Sv"};
constexpr const char* SiPrefixes[] = {"E", "P", "T", "G", "M", "k", "h", "da", "d", "c", "m", "u", "n", "p", "f", "a"};
static_assert(StepBasic_sunMetre == 0 && std::size(SiNames) == StepBasic_sunSievert + 1);
static_assert(StepBasic_spExa == 0 && StepBasic_spMilli == 10 && std::size(SiPrefixes) == StepBasic_spAtto + 1);

std::string namedText(const Handle(StepBasic_NamedUnit) & unit)
{
    if (const auto si = Handle(StepBasic_SiUnit)::DownCast(unit); !si.IsNull())
        return std::string(si->HasPrefix() ? SiPrefixes[si->Prefix()] : "") + SiNames[si->Name()];
    const auto conversion = Handle(StepBasic_ConversionBasedUnit)::DownCast(unit);
    return conversion.IsNull() ? std::string() : occt::utf8(conversion->Name());
}

std::string derivedText(const Handle(StepBasic_DerivedUnit) & unit)
{
    std::string above;
    std::string below;
    if (unit->Elements().IsNull())
        return {};
    for (const Handle(StepBasic_DerivedUnitElement) & element : unit->Elements()->Array1()) {
        const std::string name = element.IsNull() ? std::string() : namedText(element->Unit());
        if (name.empty())
            return {};
        const double power = std::abs(element->Exponent());
        std::string& side = element->Exponent() < 0 ? below : above;
        side += (side.empty() ? "" : ".") + name + (power == 1 ? std::string() : core::numberText(power));
    }
    return below.empty() ? above : (above.empty() ? "1" : above) + "/" + below;
}

} // namespace

std::string unitText(const StepBasic_Unit& unit)
{
    if (const Handle(StepBasic_NamedUnit) named = unit.NamedUnit(); !named.IsNull())
        return namedText(named);
    const Handle(StepBasic_DerivedUnit) derived = unit.DerivedUnit();
    return derived.IsNull() ? std::string() : derivedText(derived);
}

} // namespace ptx::step
