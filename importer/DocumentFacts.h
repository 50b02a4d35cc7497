#pragma once

#include "importer/plmxml/DanglingReference.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace importer
{

/// What a PLMXML document holds, of the elements that an import takes.
struct DocumentFacts {
    /// How many dangling references are kept at most; all are counted.
    static constexpr std::size_t maxDangling = DanglingReference::maxKept;

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
