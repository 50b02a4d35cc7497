#pragma once

#include "ptx/readers/step/damage/Excision.h"
#include "ptx/readers/step/damage/Fault.h"

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>

#include <optional>
#include <string>
#include <utility>
#include <vector>

class STEPCAFControl_Reader;
class StepData_StepModel;

namespace ptx::step::damage
{

/// What is wrong with one STEP file, and what it lost by it. A file without faults costs one look at its entities.
class Damage
{
public:
    /// `path` is the file; `known` are faults that an earlier reading brought to light.
    Damage(std::string path, std::vector<Fault> known) : m_path(std::move(path)), m_known(std::move(known)) {}

    /// Takes the broken entities out of `model`, which comes fresh from the text.
    void cutOut(const Handle(StepData_StepModel) & model);

    /// After the transfer: adds the occurrences that OCCT silently left out.
    void addUnplaced(const STEPCAFControl_Reader& reader);

    bool isEmpty() const { return m_losses.empty(); }
    /// The first loss in one sentence, with entity and line. Only when there is one.
    std::string firstLoss() const;

    /// What is missing from a product, and why.
    struct Mark {
        TDF_Label label;    ///< of the product; null when nobody knows which one it is
        std::string reason; ///< with entity and line, without line ends
    };
    /// The marks for all losses: those of a product by one cause are one mark. To be called after the transfer.
    std::vector<Mark> marks(const STEPCAFControl_Reader& reader) const;

private:
    std::string m_path;
    std::vector<Fault> m_known;
    std::optional<TextIndex> m_text;
    std::vector<Loss> m_losses;
};

} // namespace ptx::step::damage
