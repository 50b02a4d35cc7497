#pragma once

#include "scene/VariantTable.h"
#include "standalone/znVariants/SessionVariants.h"

namespace zn::variants
{

/// What files store of those of `variants` whose materials are alive and whose nodes are at or below `root`.
osg::VariantTable storedVariants(const SessionVariants& variants, const osg::NodePtr& root);

/// Adds to `variants` what a file stored: groups and sets of a known name take it up, as do variants. Gives a sentence
/// for each entry whose material or node is not in the tree at `root`.
QStringList addStoredVariants(SessionVariants& variants, const osg::VariantTable& table, const osg::NodePtr& root);

} // namespace zn::variants
