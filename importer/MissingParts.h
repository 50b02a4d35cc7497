#pragma once

#include "importer/ImportResult.h"

#include <vector>

namespace zn
{

/// What the converters left out of the tree at `root`, in tree order, each once with its places: a converter that takes
/// parts in by itself succeeds without those that it cannot find or that lead back to where it came from, and one whose
/// file holds broken entities without these.
std::vector<MissingPart> partsLeftOut(const osg::NodePtr& root);

/// The part files that reference nodes of the tree at `root` still wait for, in tree order, each once, with the places
/// of these nodes. Why one did not come in is looked for in `failed`, then on the disk.
std::vector<MissingPart> unreadParts(const osg::NodePtr& root, const std::vector<MissingPart>& failed);

/// The part in one line: file, reason and the first of its places.
QString describe(const MissingPart& part);

} // namespace zn
