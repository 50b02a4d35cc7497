#pragma once

#include "importer/plmxml/Structure.h"

namespace importer::plmxml
{

/// Counts the places of `structure` into `facts`, and those of each file into `files`.
void surveyPlaces(const Structure& structure, FileTable& files, zn::DocumentStructure& facts);

} // namespace importer::plmxml
