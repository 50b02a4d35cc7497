#pragma once

#include "importer/plmxml/PartOrder.h"

namespace importer::plmxml
{

/// How many leaves of `structure`, whose parts are in no ring, are switched off: the nearest flag upwards counts.
double countHiddenLeaves(const Structure& structure, const PartOrder& order);

} // namespace importer::plmxml
