#pragma once

#include "ptx/readers/step/damage/Excision.h"

#include <vector>

class STEPCAFControl_Reader;

namespace ptx::step::damage
{

/// After a transfer: the occurrences of products that did not come to stand anywhere although the product that holds
/// them did. OCCT says nothing of an occurrence whose placement it does not find. Those that were taken out before are
/// none of them.
std::vector<Loss> findUnplaced(const STEPCAFControl_Reader& reader);

} // namespace ptx::step::damage
