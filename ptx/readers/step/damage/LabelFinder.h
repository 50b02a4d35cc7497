#pragma once

#include "ptx/readers/step/damage/Owners.h"

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>

#include <unordered_map>
#include <utility>
#include <vector>

class STEPCAFControl_Reader;

namespace ptx::step::damage
{

/// Finds the labels of products after a transfer.
class LabelFinder
{
public:
    /// `reader` outlives this object.
    explicit LabelFinder(const STEPCAFControl_Reader& reader);

    /// The labels of `owners`, each once, with a number that tells them apart. A product that did not become a shape
    /// has none: those of the assemblies around it stand for it. When nothing stands for any owner, one null label.
    std::vector<std::pair<int, TDF_Label>> of(const Owners& owners) const;

private:
    TDF_Label labelOf(const Handle(StepBasic_ProductDefinition) & product) const;

    const STEPCAFControl_Reader& m_reader;
    std::unordered_map<const Standard_Transient*, Owners> m_parents;
};

} // namespace ptx::step::damage
