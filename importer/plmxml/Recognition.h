#pragma once

#include <QString>

namespace importer::plmxml
{

/// Whether `file` is taken for a PLMXML document: by its extension, or, where that is "xml", by its first element.
bool isDocument(const QString& file);

} // namespace importer::plmxml
