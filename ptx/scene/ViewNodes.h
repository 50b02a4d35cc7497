#pragma once

#include "host/OSGSystem/Node.h"
#include "ptx/model/View.h"

namespace ptx::scene
{

/// A node for the root of a scene that the import makes a variant set and a viewpoint of: it has the name of `view` and
/// the tags of a bookmark, and below it a camera with the view's name as its only tag.
/// What a camera cannot hold is told as scene/ViewTags.h says.
osg::NodePtr makeViewNode(const model::View& view);

} // namespace ptx::scene
