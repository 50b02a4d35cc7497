#pragma once

#include "importer/DocumentFacts.h"

#include <QJsonArray>
#include <QJsonObject>

#include <vector>

namespace znimport
{

/// What the PLMXML document at `file` holds, and which of its references lead nowhere; empty for any other file and for
/// one that cannot be read. Reads the document a second time, since an import tells none of it.
QJsonObject documentReport(const QString& file);

/// References that lead nowhere, as the report tells them.
QJsonArray danglingReport(const std::vector<importer::DanglingReference>& references);

} // namespace znimport
