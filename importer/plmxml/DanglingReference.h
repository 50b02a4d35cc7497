#pragma once

#include <QString>

#include <cstddef>

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

    /// How many of a document are kept at most; all are counted.
    static constexpr std::size_t maxKept = 1000;
};

} // namespace importer
