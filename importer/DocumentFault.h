#pragma once

#include <QString>

#include <optional>

namespace importer
{

/// Why a PLMXML document cannot be read.
struct DocumentFault {
    QString reason; ///< for a person
    int line = 0;   ///< from 1; 0 when the text is not at fault
    int column = 0; ///< from 1; 0 when the text is not at fault
};

/// Looks into the document at `file` by itself, since a failed load says no more than that it failed. Nothing when the
/// document is sound.
std::optional<DocumentFault> findDocumentFault(const QString& file);

/// The fault of the document at `file` in one sentence, with the file's name.
QString describe(const QString& file, const DocumentFault& fault);

} // namespace importer
