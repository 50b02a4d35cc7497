#pragma once

#include "ptx/readers/step/UserAttributes.h"

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>

#include <cstdint>
#include <unordered_map>

class STEPCAFControl_Reader;
class Standard_Transient;
class StepBasic_ProductDefinition;

namespace ptx::step
{

/// What the model of a file knows by the numbers of the text: units of contexts and labels of products.
class NumberedFacts
{
public:
    /// After the transfer of `reader`, which outlives this object.
    explicit NumberedFacts(const STEPCAFControl_Reader& reader);

    /// Null when it has no shape.
    TDF_Label labelOf(std::uint32_t product) const;

    /// Where the context names none, the unit of the first one that does.
    double millimetresOf(std::uint32_t context) const;

private:
    void add(int number, const Handle(Standard_Transient) & entity);

    ProductLabels m_labels;
    std::unordered_map<int, Handle(StepBasic_ProductDefinition)> m_products;
    std::unordered_map<int, double> m_units;
    double m_firstUnit = 1;
};

} // namespace ptx::step
