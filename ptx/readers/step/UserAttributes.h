#pragma once

#include <NCollection_DataMap.hxx>
#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>

#include <string>
#include <vector>

class STEPCAFControl_Reader;
class StepBasic_ProductDefinition;
class Transfer_TransientProcess;

namespace ptx::step
{

/// Tags of labels.
using LabelTags = NCollection_DataMap<TDF_Label, std::vector<std::string>, TDF_LabelMapHasher>;

/// Those of `label`, which is not null.
std::vector<std::string>& tagsAt(LabelTags& tags, const TDF_Label& label);

/// The labels of product definitions, after the transfer.
class ProductLabels
{
public:
    explicit ProductLabels(const STEPCAFControl_Reader& reader);
    /// Null for a definition that has no shape.
    TDF_Label of(const Handle(StepBasic_ProductDefinition) & definition) const;

private:
    const STEPCAFControl_Reader& m_reader;
    Handle(Transfer_TransientProcess) m_process;
};

/// The user attributes of products (part number, revision, description ...) and their physical materials, which the
/// OCCT's reader leaves behind in its model or mistakes: texts and numbers of general properties with their units,
/// without validation properties. To be called after the transfer.
LabelTags userAttributes(const STEPCAFControl_Reader& reader);

} // namespace ptx::step
