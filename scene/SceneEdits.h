#pragma once

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Node.h"

#include <memory>

/// The commonest changes of a tree, each within a bracket of its own that names the one field it changes. What is given
/// to be changed is never null.
namespace osg
{

/// Hangs `child` below `parent`, as the last child. A move out of a former parent is no edit of that one.
void addChild(const NodePtr& parent, const NodePtr& child);
/// Takes `child` out of `parent`, which gives up its reference on it.
void subChild(const NodePtr& parent, const NodePtr& child);

/// Attaches `attachment` in place of one of its group.
void attach(const AttachmentContainerPtr& holder, const AttachmentPtr& attachment);
/// Takes `attachment` away, and with it the holder's reference.
void detach(const AttachmentContainerPtr& holder, const AttachmentPtr& attachment);

/// Gives `node` another core; null takes it away.
void exchangeCore(const NodePtr& node, const NodeCorePtr& core);
/// Gives `geometry` another mesh; null takes it away.
void exchangeMesh(const GeometryPtr& geometry, std::shared_ptr<const Mesh> mesh);

} // namespace osg
