#pragma once

#include "host/OSGSystem/Node.h"

#include <functional>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace importer
{

/// Puts the tree at `root` in order that came from a file of meshes and stands in the scene of `session`, as the
/// settings `optimize.` say; the optimisation job takes no such tree. In this order: equal materials become one;
/// transforms go into the vertices; geometries are merged, also across places that say nothing and those that the
/// program which wrote the file has only numbered; nodes get contents of their own. Colours of vertices, points and
/// lines stay. So do nodes and materials that the variants of the session know.
///
/// A step that memory does not suffice for is left by std::bad_alloc; what is merged or folded then stays whole.
/// @param beginStep is told the name of each step before it begins, and null behind the last one; the names are those
///                  of the optimisation job
void optimizeMeshTree(zn::StandaloneSession& session, const osg::NodePtr& root,
                      const std::function<void(const char* step)>& beginStep);

} // namespace importer
