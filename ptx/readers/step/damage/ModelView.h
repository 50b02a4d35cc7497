#pragma once

#include "ptx/readers/step/damage/TextIndex.h"

#include <Standard_Handle.hxx>
#include <Standard_Transient.hxx>
#include <StepData_StepModel.hxx>

#include <unordered_map>
#include <vector>

namespace ptx::step::damage
{

/// A model by the numbers that its entities have in the text.
class ModelView
{
public:
    /// `text` is the text of `model`. Both outlive this object.
    ModelView(const Handle(StepData_StepModel) & model, const TextIndex& text);

    /// Entity #`ident`, null if there is none.
    Handle(Standard_Transient) at(int ident) const;
    int identOf(const Handle(Standard_Transient) & entity) const { return m_model->IdentLabel(entity); }
    /// The entities that refer to #`ident`, by their numbers in the text.
    std::vector<int> referringTo(int ident) const { return m_text.referringTo(ident); }
    /// Whether there is any product; a fragment of a file has shapes alone.
    bool hasProducts() const { return m_hasProducts; }
    /// Puts `other` in the place of entity #`ident`, for all who ask the model; fields of entities stay as they are.
    void replace(int ident, const Handle(Standard_Transient) & other);

private:
    Handle(StepData_StepModel) m_model;
    const TextIndex& m_text;
    std::unordered_map<int, int> m_numbers; ///< in the model
    bool m_hasProducts = false;
};

} // namespace ptx::step::damage
