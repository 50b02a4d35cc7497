#pragma once

#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace importer
{

/// A reference of a PLMXML document that leads to no element of the kind that it must lead to. The import passes such
/// references over without a word.
struct DanglingReference {
    QString element;   ///< the kind of the element that refers, such as "Instance"
    QString id;        ///< its id; may be empty
    QString attribute; ///< such as "partRef"
    QString target;    ///< one reference, as it is written
    int line = 0;      ///< of the element, from 1
};

/// What a PLMXML document holds, of the elements that an import takes.
struct DocumentFacts {
    /// How many dangling references are kept at most; all are counted.
    static constexpr std::size_t maxDangling = 1000;

    /// Elements of this kind.
    std::size_t instances = 0;
    /// Elements of this kind.
    std::size_t parts = 0;
    std::size_t files = 0; ///< different part files that it names
    /// Elements of this kind.
    std::size_t occurrences = 0;
    /// Elements of this kind.
    std::size_t materials = 0;
    /// All dangling references, those beyond the limit included.
    std::size_t danglingCount = 0;
    std::vector<DanglingReference> dangling; ///< the first of them, in the order of the text
};

/// Reads the document at `file` by itself. Nothing when an import could not read it either.
std::optional<DocumentFacts> readDocumentFacts(const QString& file);

} // namespace importer
