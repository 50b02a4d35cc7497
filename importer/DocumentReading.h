#pragma once

#include "importer/plmxml/Normaliser.h"
#include "standalone/reading/ReaderProcess.h"

#include <QString>

#include <memory>

class QTemporaryDir;

namespace importer
{

/// A document that was read.
struct ReadDocument {
    plmxml::NormalisedDocument content;    ///< without the text
    QString text;                          ///< path of the file with the text; empty where the document has none
    std::unique_ptr<QTemporaryDir> folder; ///< of that file; null without one
};

/// Reads the document `file` where the setting files.reading of `session` says: by `program` in a child process, or in
/// this one. What comes of it is the same. Its text goes into a file called `textName`.
///
/// While a child works the event loop runs (see `zn::reading::ReaderProcess`). The error tells that the read was
/// cancelled, why the child failed, or that the text cannot be written.
files::Expected<ReadDocument> readDocument(zn::Session& session, const QString& file, const QString& textName,
                                           const plmxml::NormaliserOptions& options,
                                           const QString& program = zn::reading::installedReader());

} // namespace importer
