#pragma once

#include "host/OSGSystem/Node.h"

/// Gives each loaded reference below `root` that has no content the content of the one that shares its core: a part file
/// that the host reads by itself arrives at the first of its places only. The copies share all cores.
void fillRepeatedParts(const osg::NodePtr& root);
