#pragma once

#include "host/OSGSystem/Node.h"

#include <cstddef>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace importer
{

/// Takes the wrappers (see `osg::Wrappers`) out of the tree at `root`; what is below them takes their places. Those
/// stay that somebody holds besides their parent, that are selected in `session`, or that have a node variant there.
/// Ids of occurrences, bounds and what is drawn stay as they are. Where memory does not suffice the rest stays.
/// @return how many are gone
std::size_t foldTree(zn::StandaloneSession& session, const osg::NodePtr& root);

} // namespace importer
