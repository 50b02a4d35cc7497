#pragma once

#include "importer/plmxml/StructureFault.h"

#include <optional>

namespace importer::plmxml
{

/// Counts the places of `structure` into `facts`, and those of each file into `files`. Each part is counted once,
/// however often it is placed. More than `mostPlaces` are a fault. Of a structure that contains itself only the places
/// at the top are counted.
std::optional<StructureFault> surveyPlaces(const Structure& structure, FileTable& files, zn::DocumentStructure& facts,
                                           std::size_t mostPlaces);

} // namespace importer::plmxml
