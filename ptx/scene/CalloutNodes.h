#pragma once

#include "host/OSGSystem/Node.h"
#include "ptx/model/Model.h"
#include "ptx/scene/PartCores.h"
#include "ptx/scene/ViewVisibility.h"

#include <cstddef>

namespace ptx::scene
{

/// A node "PMI" with a child for each of `callouts`: its name, what it tells as attributes, and its geometries below
/// it. Places of one product share these. The nodes made are added to `nodes`. What views show of them is told by
/// `visibility`; the node is not active unless the view from the start shows one of its callouts.
osg::NodePtr makeCalloutsNode(const std::vector<model::Callout>& callouts, PartCores& cores, ViewVisibility& visibility,
                              std::size_t& nodes);

} // namespace ptx::scene
