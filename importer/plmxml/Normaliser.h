#pragma once

#include "importer/plmxml/DocumentStructure.h"
#include "importer/plmxml/FileFinder.h"
#include "importer/plmxml/PlaceWalk.h"
#include "importer/plmxml/Structure.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <string>

namespace importer::plmxml
{

/// How a document is to be read.
struct NormaliserOptions {
    QStringList preferredFormats;  ///< for parts with files of several formats, the best first
    FileFinder::Allows allowsFile; ///< which files it may name; all without it
    /// Whether facts are wanted of a document that is read as it stands and has nothing to add to its nodes, too.
    bool wantsFacts = false;
    /// Gives the path of a file that is read as the structure below an element of another document. Without it the
    /// whole document is.
    std::function<QString(const QString& document, const QString& id)> standIn = {};
    QString root = {}; ///< the id of the element whose structure alone is wanted; empty for that of the document
    std::size_t mostPlaces = PlaceWalk::MaxPlaces; ///< a structure with more is refused before any is made
};

/// What becomes of a document.
struct NormalisedDocument {
    /// What the import has to do.
    enum class Way {
        Refuse,     ///< there is nothing in it to import, as `reason` says
        AsItStands, ///< give the document itself to the loader, which reads it or tells its fault
        AsText      ///< give `text` to the loader
    };

    Way way = Way::AsItStands;
    QString reason;                ///< for a person
    std::string text;              ///< a document of the loader's form
    bool isRead = false;           ///< whether there are facts and a structure
    bool hasAllFacts = false;      ///< otherwise those that take time are left out
    zn::DocumentStructure facts;   ///< what was found and chosen
    Structure structure;           ///< of the places
    QHash<QString, QString> asked; ///< what the document says, by the path of each file that is not there
};

/// Reads the document at `file`, whatever its dialect, and finds its product structure. Asks the disk for part files,
/// but reads none.
NormalisedDocument normalise(const QString& file, const NormaliserOptions& options);

} // namespace importer::plmxml
