#pragma once

#include <QString>

namespace importer::plmxml
{

/// An element of a document.
struct DocumentElement {
    QString document; ///< path
    QString id;       ///< within it

    /// For a person.
    QString text() const { return document + QLatin1Char('#') + id; }
    /// The path of the file that stands in for it, in a folder of its own in `folder` and called like the document: the
    /// same for the same element, another for each other one.
    QString standIn(const QString& folder) const;
};

} // namespace importer::plmxml
