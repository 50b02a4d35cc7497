#pragma once

#include "host/OSGSystem/Node.h"
#include "ptx/model/Model.h"
#include "ptx/scene/PartCores.h"

#include <cstddef>

namespace ptx::scene
{

/// A node "PMI" that is not active, with a child for each of `callouts`: its name, what it tells as attributes, and its
/// geometries below it. Places of one product share these. The nodes made are added to `nodes`.
osg::NodePtr makeCalloutsNode(const std::vector<model::Callout>& callouts, PartCores& cores, std::size_t& nodes);

} // namespace ptx::scene
