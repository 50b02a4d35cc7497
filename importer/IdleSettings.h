#pragma once

#include "importer/EmptyImport.h"

#include <QStringList>

namespace zn
{
struct OptimizeSettings;
} // namespace zn

namespace importer
{

/// The names of the settings `optimize.` that ask for something which no step does for trees from `source`, in the
/// order of the settings. One that asks for what these trees are like anyway (kept surfaces, kept references) is none.
QStringList idleSettings(Source source, const zn::OptimizeSettings& settings);

} // namespace importer
