#pragma once

#include "files/References.h"
#include "importer/plmxml/PlaceWalk.h"

#include <QString>
#include <QStringList>

#include <cstddef>

namespace importer::plmxml
{

/// How a document is to be read.
struct NormaliserOptions {
    QStringList preferredFormats; ///< for parts with files of several formats, the best first
    files::DocumentRules rules;   ///< which files it may name
    /// Whether facts are wanted of a document that is read as it stands and has nothing to add to its nodes, too.
    bool wantsFacts = false;
    /// Where files stand in for elements of other documents (see `DocumentElement`). Without it the whole documents are
    /// read.
    QString elementsFolder = {};
    QString root = {}; ///< the id of the element whose structure alone is wanted; empty for that of the document
    std::size_t mostPlaces = PlaceWalk::MaxPlaces; ///< a structure with more is refused before any is made
};

/// The options as words for another process, "name=value" each, all of them.
QStringList wordsOf(const NormaliserOptions& options);

/// Takes one such word into `options`. @return false when it is none
bool takeWord(NormaliserOptions& options, const QString& word);

} // namespace importer::plmxml
