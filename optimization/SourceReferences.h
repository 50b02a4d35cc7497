#pragma once

#include "host/OSGSystem/Node.h"

namespace optimization
{

/// Dissolves the references to source files in the tree at `root`, so that it holds plain groups and transforms.
///
/// A reference without a transform gives its place among its siblings to its children. One with a transform, and a
/// root, stays as a `Transform3D` with the same matrix and loses its file info. A reference without a source file is
/// left alone.
void removeSourceReferences(const osg::NodePtr& root);

/// Turns each reference whose path begins with "**" into a `Transform3D` without a transform. The node keeps its place,
/// its children and its file info.
void removeInvalidMechanorReferences(const osg::NodePtr& root);

} // namespace optimization
