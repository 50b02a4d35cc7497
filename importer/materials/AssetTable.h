#pragma once

#include "files/Expected.h"

#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace importer::materials
{

/// What a row looks at, the weightiest first.
enum class RowKind { Occurrence, Part, Material, Attribute, Color };
/// How many there are.
inline constexpr std::size_t rowKinds = 5;

/// Which asset is put on what. Texts are UTF-8.
struct TableRow {
    RowKind kind = RowKind::Material; ///< what it looks at
    std::string pattern;              ///< see `osg::matchesPattern`; "#rrggbb" in small letters for a colour
    std::string asset;                ///< its uuid or its name
};

/// A file "materials.json" in a folder of material assets.
struct AssetTable {
    QString file;               ///< where it stands
    std::vector<TableRow> rows; ///< in the order of the file
};

/// Reads the table in `file`. An error names the line where it is no JSON, or the place as a JSON pointer.
files::Expected<AssetTable> readAssetTable(const QString& file);

/// The place of a row in its file, as a JSON pointer: "/rows/2".
QString placeOf(std::size_t row);

/// What a row looks for, as its file has it: `part "Bolt*"`.
QString describe(const TableRow& row);

} // namespace importer::materials
