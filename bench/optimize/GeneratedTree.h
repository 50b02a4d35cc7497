#pragma once

#include "host/OSGSystem/Node.h"

/// A tree as a converter leaves it: assemblies of sub-assemblies, which are references without a transform. Each of
/// these has twenty nodes: placed parts (some scaled, some mirrored) that share the geometries of 32 parts, parts of
/// their own with materials of equal look, and a node that varies with bookmarks. Ten bookmarks hang below the root.
/// @param nodes about that many
osg::RefPtr<osg::NodePtr> generateTree(unsigned nodes);
