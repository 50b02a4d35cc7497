#pragma once

#include "importer/ImportResult.h"

#include <vector>

/// The parts that the converters left out of the tree at `root`, in tree order, each once: a converter that takes parts
/// in by itself succeeds without those that it cannot find or that lead back to where it came from.
std::vector<znMissingPart> partsLeftOut(const osg::NodePtr& root);
