#pragma once

#include "importer/plmxml/FileTable.h"

namespace importer::plmxml
{

/// What the facts of a document tell of one of its files.
zn::StructureFile toldOf(const ShapeFile& file);

/// What a document says of a file that is not there, for a person.
QString askedTextOf(const ShapeFile& file);

} // namespace importer::plmxml
