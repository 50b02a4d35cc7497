#pragma once

#include "importer/plmxml/FileTable.h"

namespace importer::plmxml
{

/// What a document says of a file.
struct AskedFile {
    QString written;        ///< as the document has it, with the element that is meant
    int line = 0;           ///< of the element that names it first, from 1
    bool isRefused = false; ///< whether something is there, but no regular file
};

/// What the facts of a document tell of one of its files.
zn::StructureFile toldOf(const ShapeFile& file);

/// What its document says of a file that is not there.
AskedFile askedOf(const ShapeFile& file);

/// The same for a person.
QString describe(const AskedFile& asked);

} // namespace importer::plmxml
