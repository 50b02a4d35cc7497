#pragma once

#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <string_view>

namespace importer::plmxml
{

/// Builds the structure below one element of a document into `structure`: an instance, a part, a graph, an occurrence,
/// which stands at the origin then, or a revision, by the first part or occurrence of it. What occurrences say of
/// places in a graph holds for the whole document and is left out. Nothing when there is no such element with this id.
void addStructureBelow(const Reading& reading, std::string_view id, Structure& structure);

} // namespace importer::plmxml
