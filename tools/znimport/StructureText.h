#pragma once

#include "importer/DocumentStructure.h"

#include <QJsonObject>
#include <QString>

namespace znimport
{

/// The part files of a document: a line for each that would be read, and for each that is missing.
QString describePartFiles(const zn::DocumentStructure& document);

/// What a product structure holds and what was chosen of it, as the report tells it.
QJsonObject structureReport(const zn::DocumentStructure& document);

} // namespace znimport
