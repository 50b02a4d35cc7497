#pragma once

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>

#include <string>
#include <vector>

class STEPCAFControl_Reader;

namespace ptx::step
{

/// Tags of labels.
using LabelTags = NCollection_DataMap<TDF_Label, std::vector<std::string>, TDF_LabelMapHasher>;

/// The user attributes of products (part number, revision, description ...) and their physical materials, which the
/// OCCT's reader leaves behind in its model or mistakes: texts and numbers of general properties, without validation
/// and mass properties. To be called after the transfer.
LabelTags userAttributes(const STEPCAFControl_Reader& reader);

} // namespace ptx::step
