#pragma once

#include "ptx/readers/step/damage/Fault.h"
#include "ptx/readers/step/damage/ModelView.h"
#include "ptx/readers/step/damage/Owners.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class StepRepr_NextAssemblyUsageOccurrence;

namespace ptx::step::damage
{

/// What a file lost through one of its faults.
struct Loss {
    Fault fault;
    Owners owners; ///< the products that something is missing from; none when that cannot be told
};

/// Takes broken entities out of a model together with all that is useless without them, up to the next list that can do
/// without a member: a broken curve costs the faces around it, a broken placement the occurrence that it places, a
/// broken colour the colour.
class Excision
{
public:
    /// `model` outlives this object.
    explicit Excision(ModelView& model) : m_model(model) {}

    /// Takes the entities of `faults` out. To be called once, before OCCT looks at the model as a whole.
    /// @return what shapes and occurrences are lost by it, in the order of the faults; colours and properties are none
    std::vector<Loss> run(const std::vector<Fault>& faults);

private:
    using Number = std::size_t; ///< of a fault

    void begin(const Fault& fault, Number number);
    void breakEntity(int ident, Number number);
    void spread();
    void reach(int ident, const Handle(Standard_Transient) & from, Number number);
    void cutFrom(int ident, const Handle(Standard_Transient) & list, Number number);
    void tellHoles(int ident, const Handle(Standard_Transient) & list, Number number);
    void tell(Number number, const Owners& owners);
    void cutOccurrence(const Handle(Standard_Transient) & place);
    void useSpaceCurve(int ident);
    void apply();

    ModelView& m_model;
    std::vector<Loss> m_losses; ///< one for each fault
    std::vector<bool> m_isTold; ///< of faults, whether something is lost
    std::unordered_map<int, Number> m_broken;
    std::vector<int> m_bereft;                   ///< curves that keep their form in space alone
    std::vector<int> m_open;                     ///< broken, what refers to them is still to be looked at
    std::unordered_map<int, std::size_t> m_left; ///< members left in lists that lose some
    std::unordered_map<int, Owners> m_ownersOf;
    std::vector<Handle(StepRepr_NextAssemblyUsageOccurrence)> m_occurrences;
};

} // namespace ptx::step::damage
