#pragma once

#include "host/OSGSystem/Node.h"

#include <unordered_set>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace importer
{

/// The nodes that `session` knows by their ids alone: the selected one and those with node variants. A step that takes
/// nodes out of a tree leaves these.
std::unordered_set<const osg::Node*> knownNodes(zn::StandaloneSession& session);

} // namespace importer
