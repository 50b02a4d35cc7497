#pragma once

#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

namespace importer::plmxml
{

/// Whether the loader shows nothing of a part, whatever its representations are: those that are neither assemblies nor
/// solid.
bool isOfEmptyType(const pugi::xml_node& part);

/// Whether a document that is left as it stands has parts of that kind with representations.
bool hasEmptyTypes(const Reading& reading);

/// Takes the pieces from the parts of `structure` that are of such a type, and marks their files. For a document that
/// is left as it stands.
void dropEmptyTypes(const Reading& reading, Structure& structure);

/// Counts the representations of the parts of `structure` that are no piece of it into the facts of `reading`, with the
/// reason.
///
/// @param isRewritten whether the pieces of `structure` are what the loader is given; otherwise it takes all
/// representations that it can
void noteLeftOutShapes(const Reading& reading, const Structure& structure, bool isRewritten);

} // namespace importer::plmxml
