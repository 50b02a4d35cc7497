#pragma once

#include "importer/inventory/PartsList.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace importer::inventory
{

/// Most attributes that a parts list has columns for, those that most rows have first.
inline constexpr std::size_t mostAttributeColumns = 1000;

/// What came of writing a parts list.
struct PartsListWritten {
    std::optional<QString> error; ///< names the file; what stood there before is left then
    QStringList warnings;
};

/// Writes `rows` to `file`: as CSV (RFC 4180, UTF-8, a line of names first), or as JSON where the name ends in "json".
/// `docs/attributes.md` tells the columns. The file takes its name when it is complete.
PartsListWritten writePartsList(const std::vector<PartsListRow>& rows, PartsListLevels levels, const QString& file);

} // namespace importer::inventory
