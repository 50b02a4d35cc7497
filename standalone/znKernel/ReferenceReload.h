#pragma once

#include "host/OSGSystem/Node.h"

#include <vector>

namespace zn
{
class Session;
} // namespace zn

namespace zn::kernel
{

/// Reads the file that the core of `reference` names, hangs what came of it below `reference` and marks that as loaded.
/// Appends what is new below it to `contents`. Changes nothing and gives false when there is no such file, or none that
/// can be read.
/// @param replace whether what hung below it before goes
bool reloadReference(Session& session, const osg::NodePtr& reference, std::vector<osg::NodePtr>& contents,
                     bool replace);

} // namespace zn::kernel
