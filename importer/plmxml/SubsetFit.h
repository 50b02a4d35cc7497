#pragma once

#include "importer/plmxml/Overrides.h"
#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

namespace importer::plmxml
{

/// Whether the loader makes of the document at `file` what it says, so that nothing has to be rewritten: all of its
/// structure is of the elements and attributes that the loader takes, where it takes them, and leads to the same files.
///
/// `structure` was built from its graphs. How many nodes the loader makes for shapes is noted in it.
bool fitsLoader(const Reading& reading, const QString& file, const pugi::xml_node& view,
                const Overrides::Outcome& overrides, Structure& structure);

} // namespace importer::plmxml
