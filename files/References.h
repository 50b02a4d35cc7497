#pragma once

#include "files/references/ReferencePolicy.h"

#include <QString>

namespace files
{

/// Why `path` may not be taken by what stands in the file `from`; nothing when it may. `top` of the policy may be
/// empty, and is the folder of `from` then.
std::optional<references::Refusal> refusalOf(references::Policy policy, references::Use use, const QString& path,
                                             const QString& from);

/// Which documents one import reads: a value, so that every process that works for it decides the same.
struct DocumentRules {
    references::Policy policy;
    QString imported;  ///< the file that was asked for, absolute; without it every document is read
    QString ownFolder; ///< absolute; what lies below it was put there by the import itself, and is read

    /// Why the document `path` is not read; nothing when it is.
    std::optional<references::Refusal> refusal(const QString& path) const;
};

/// The reason for a person.
QString textOf(references::Refusal refusal);

} // namespace files
