#pragma once

#include "host/OSGSystem/Node.h"

#include <cstddef>

namespace importer
{

/// Gives each loaded reference below `root` that has no content the content of the one that shares its core: a part
/// file that the host reads by itself arrives at the first of its places only. The copies share all cores.
///
/// Documents within documents could ask for any number of nodes; those that would make it more than `nodesLeft`, of
/// which the copies are taken, stay empty.
/// @return how many places stay empty
std::size_t fillRepeatedParts(const osg::NodePtr& root, std::size_t& nodesLeft);

} // namespace importer
