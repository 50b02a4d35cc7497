#include "ptx/readers/step/NumberedFacts.h"

#include "ptx/readers/step/LengthUnit.h"

#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepData_StepModel.hxx>

namespace ptx::step
{

NumberedFacts::NumberedFacts(const STEPCAFControl_Reader& reader) : m_labels(reader)
{
    const auto model = Handle(StepData_StepModel)::DownCast(reader.Reader().Model());
    for (int i = 1; i <= model->NbEntities(); ++i)
        add(model->IdentLabel(model->Value(i)), model->Value(i));
}

TDF_Label NumberedFacts::labelOf(std::uint32_t product) const
{
    const auto found = m_products.find(static_cast<int>(product));
    return found == m_products.end() ? TDF_Label() : m_labels.of(found->second);
}

double NumberedFacts::millimetresOf(std::uint32_t context) const
{
    const auto found = m_units.find(static_cast<int>(context));
    return found == m_units.end() ? m_firstUnit : found->second;
}

void NumberedFacts::add(int number, const Handle(Standard_Transient) & entity)
{
    if (const auto product = Handle(StepBasic_ProductDefinition)::DownCast(entity); !product.IsNull())
        m_products.emplace(number, product);
    const double unit = millimetresIn(entity);
    if (!(unit > 0))
        return;
    if (m_units.empty())
        m_firstUnit = unit;
    m_units.emplace(number, unit);
}

} // namespace ptx::step
