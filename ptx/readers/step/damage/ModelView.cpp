#include "ptx/readers/step/damage/ModelView.h"

#include <StepBasic_ProductDefinition.hxx>

namespace ptx::step::damage
{

ModelView::ModelView(const Handle(StepData_StepModel) & model, const TextIndex& text) : m_model(model), m_text(text)
{
    m_numbers.reserve(static_cast<std::size_t>(model->NbEntities()));
    for (int number = 1; number <= model->NbEntities(); ++number) {
        const Handle(Standard_Transient)& entity = model->Value(number);
        m_numbers.try_emplace(model->IdentLabel(entity), number);
        m_hasProducts = m_hasProducts || entity->IsKind(STANDARD_TYPE(StepBasic_ProductDefinition));
    }
}

Handle(Standard_Transient) ModelView::at(int ident) const
{
    const auto number = m_numbers.find(ident);
    return number == m_numbers.end() ? Handle(Standard_Transient)() : m_model->Value(number->second);
}

void ModelView::replace(int ident, const Handle(Standard_Transient) & other)
{
    if (const auto number = m_numbers.find(ident); number != m_numbers.end())
        m_model->ReplaceEntity(number->second, other);
}

} // namespace ptx::step::damage
