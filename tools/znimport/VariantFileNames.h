#pragma once

#include <QStringList>

namespace znimport
{

/// A name of a file for each name of a set, without an ending: what file systems do not take becomes "_", and names
/// that would be one file, whatever the case of their letters, are numbered.
QStringList variantFileNames(const QStringList& setNames);

} // namespace znimport
