#pragma once

#include "importer/plmxml/DocumentStructure.h"
#include "importer/plmxml/FileFacts.h"
#include "importer/plmxml/NormaliserOptions.h"
#include "importer/plmxml/Refusal.h"
#include "importer/plmxml/Structure.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <string>
#include <vector>

namespace importer::plmxml
{

/// What becomes of a document.
struct NormalisedDocument {
    /// What the import has to do.
    enum class Way : std::uint8_t {
        Refuse,     ///< there is nothing in it to import, as `refusal` says
        AsItStands, ///< give the document itself to the loader, which reads it or tells its fault
        AsText,     ///< give `text` to the loader
        Last = AsText
    };

    Way way = Way::AsItStands;
    Refusal refusal;
    std::string text;                      ///< a document of the loader's form
    std::vector<DocumentElement> elements; ///< that files stand in for in the text
    bool isRead = false;                   ///< whether there are facts and a structure
    bool hasAllFacts = false;              ///< otherwise those that take time are left out
    zn::DocumentStructure facts;           ///< what was found and chosen
    Structure structure;                   ///< of the places
    QHash<QString, AskedFile> asked;       ///< by the path of each file that is not there
};

/// Reads the document at `file`, whatever its dialect, and finds its product structure. Asks the disk for part files,
/// but reads none.
NormalisedDocument normalise(const QString& file, const NormaliserOptions& options);

} // namespace importer::plmxml
