#pragma once

#include "ptx/core/Outcome.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace ptx::conversion
{

/// What came of a document.
struct ReadDocument {
    std::string text;    ///< the same in the loader's form; empty where it has no other
    std::string report;  ///< the rest, for the host
    QString strangeWord; ///< one of the options that is none; nothing was read then
};

/// Reads the product structure `document` with options in words.
using DocumentReader = std::function<ReadDocument(const QString& document, const QStringList& words)>;

/// Reads a product structure on behalf of a host, within the limits and with the log of a conversion, and writes its
/// text in the loader's form, where it has one, and a report beside it (`protocol::NotesSuffix`).
///
/// `arguments` are as `hostRequestOf` takes them. The process locks itself in first: it may list the folders in which
/// the document may name files (`files::DocumentRules`), and read those beside the document. `load` is called once
/// after that, and may take code from the folder `readers`.
core::ExitCode readDocument(const std::vector<std::string>& arguments,
                            const std::function<core::Outcome<DocumentReader>()>& load, const std::string& readers);

} // namespace ptx::conversion
