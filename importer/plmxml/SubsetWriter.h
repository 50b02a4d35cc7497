#pragma once

#include "importer/plmxml/Structure.h"

#include <string>

namespace importer::plmxml
{

/// Writes `structure` as a document of the form that the loader reads: one graph of instances, each with a transform of
/// its own; parts that either place instances or have one file, by its absolute path; and one view with what is
/// different at single places. Elements keep the ids that they had where these are plain words.
///
/// @param lengthUnit of the structure's numbers, in metres
std::string writeSubset(const Structure& structure, const FileTable& files, double lengthUnit);

} // namespace importer::plmxml
