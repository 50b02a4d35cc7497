#pragma once

#include "files/references/ReferencePolicy.h"

#include <QString>

namespace files
{

/// Why `path` may not be taken by what stands in the file `from`; nothing when it may. `top` of the policy may be
/// empty, and is the folder of `from` then.
std::optional<references::Refusal> refusalOf(references::Policy policy, references::Use use, const QString& path,
                                             const QString& from);

/// The reason for a person.
QString textOf(references::Refusal refusal);

} // namespace files
