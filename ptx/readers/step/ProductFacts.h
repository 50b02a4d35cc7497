#pragma once

#include "ptx/readers/step/UserAttributes.h"

namespace ptx::step
{

/// What a file says of its products and their places for whom it files them: id, description and version of each
/// product, its documents, and the reference designators of occurrences.
void addProductFacts(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document, LabelTags& tags);

} // namespace ptx::step
