#pragma once

#include "ptx/readers/step/annotations/Drawing.h"
#include "ptx/readers/step/p21/EntityIndex.h"
#include "ptx/readers/step/p21/Records.h"

namespace ptx::step::annotations
{

/// What the annotations of a text draw, each in its callout, or alone when it is in none. Taken are the records of the
/// text, because OCCT has no entities for most of it. Costs a look at the types when there are none.
Drawing readAnnotations(const p21::Records& records, const p21::EntityIndex& index);

} // namespace ptx::step::annotations
