#pragma once

#include <QString>

namespace zn::kernel
{

/// Where the conversion of `input` writes its scene file in `folder`: under the converted name, or with a further mark
/// in the name when that is taken.
///
/// A name is taken while a progress file lies beside it. This makes the progress file, empty, in one step with the
/// look, so that of two jobs in whatever processes one gets the name; the name is given back by removing it. A folder
/// that takes no files gets the plain name: the converter tells what is wrong with the folder.
QString takenSceneFile(const QString& input, const QString& folder);

/// Where the update of an old file writes in `folder`: a name that nobody else is given.
QString updatedFile(const QString& input, const QString& folder);

} // namespace zn::kernel
